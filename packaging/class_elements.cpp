// class_elements: prints the classes of a MOF file as CIM-XML, one CLASS element a line. A CIM server without
// a MOF compiler takes them in CreateClass requests.
//
// An SFCB 1.3 takes the bare bones only. Each class stands alone, with all that it inherits and no
// superclass: its class provider crashes when it has to merge references into a subclass. And of the
// qualifiers those are left that it needs, for it crashes on some of the others.
//
// Usage: class_elements FILE
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "server/cimxml/class_writer.h"
#include "server/cimxml/xml_writer.h"
#include "server/model/cim_class.h"
#include "server/schema/class_schema.h"
#include "server/schema/mof_parser.h"

namespace {

void keep_what_is_needed(cimserver::Qualifiers& qualifiers) {
    std::erase_if(qualifiers, [](const cimserver::Qualifier& qualifier) {
        return qualifier.name != "Key" && qualifier.name != "Association" && qualifier.name != "Abstract";
    });
}

// Attribute and element text may hold line ends, which XML can also say without one.
std::string on_one_line(const std::string& xml) {
    std::string line;
    for (const char character : xml) {
        if (character == '\n') {
            line += "&#10;";
        } else {
            line += character;
        }
    }
    return line;
}

void print_classes(const char* file) {
    cimserver::ClassSchema schema;
    cimserver::parse_mof_file(file, schema);
    for (const cimserver::ClassDeclaration* declared : schema.subclasses("", true)) {
        cimserver::ClassDeclaration alone = *declared;
        alone.superclass.clear();
        keep_what_is_needed(alone.qualifiers);
        for (cimserver::PropertyDeclaration& property : alone.properties) {
            keep_what_is_needed(property.qualifiers);
            property.propagated = false;
        }
        alone.methods.clear();
        cimserver::XmlWriter xml;
        cimserver::write_class(xml, alone, {});
        std::puts(on_one_line(xml.take()).c_str());
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: class_elements FILE\n", stderr);
        return 2;
    }
    try {
        print_classes(argv[1]);
        return std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "class_elements: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
