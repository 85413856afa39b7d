// What docs/classes.md says of the classes.
#ifndef KESTO_TESTS_SUPPORT_CLASS_DOCUMENT_H
#define KESTO_TESTS_SUPPORT_CLASS_DOCUMENT_H

#include <map>
#include <string>
#include <vector>

namespace test_support {

struct DocumentedProperty {
    std::string type;
    std::string unit; // empty when the table gives none
    bool isKey = false;

    friend bool operator==(const DocumentedProperty&, const DocumentedProperty&) = default;
};

struct DocumentedClass {
    std::string superclasses; // "`KESTO_StackSettings`, `CIM_SettingData`"
    std::map<std::string, DocumentedProperty> properties;
};

// Every class that has a heading of its own.
std::map<std::string, DocumentedClass> documented_classes();

// Every class that has a row of its own in a table of classes, with the cells after its name.
std::map<std::string, std::vector<std::string>> documented_class_rows();

} // namespace test_support

#endif
