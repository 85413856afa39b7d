// What our classes declare is what the provider sets: every property and key, with its type.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "server/model/cim_class.h"
#include "tests/schema/schema_test.h"

namespace schema_tests {
namespace {

using cimserver::ClassDeclaration;
using cimserver::PropertyDeclaration;
using Texts = std::set<std::string>;

Texts without(const Texts& all, const Texts& taken) {
    Texts left = all;
    for (const std::string& text : taken) {
        left.erase(text);
    }
    return left;
}

// Classes that no object is of, so that what they inherit is never set.
const NameSet WITHOUT_OBJECTS{
    "KESTO_RemoteIPPort",  // stands in references only, by a path
    "KESTO_FCIPTCPEnpoint" // a name to ask by: what is answered is of the class KESTO_FCIPTCPEndpoint
};

class DeclaredProperties : public ObservedProvider {
  protected:
    // "Class.Property type", for what instances and paths have.
    Texts set_by_provider() {
        Texts texts;
        const auto add = [&](const std::string& className, const TypedNames& names) {
            for (const auto& [name, type] : names) {
                texts.insert(declared_name(className) + "." + name + " " + type_text(type));
            }
        };
        for (const auto& [className, names] : observed().properties) {
            add(className, names);
        }
        for (const auto& [className, paths] : observed().keys) {
            for (const TypedNames& keys : paths) {
                if (!is_keyed_as_another(className)) add(className, keys);
            }
        }
        return texts;
    }

    static Texts declared() {
        Texts texts;
        for (const ClassDeclaration* declaration : concrete_classes()) {
            for (const PropertyDeclaration* property : own_properties(*declaration)) {
                texts.insert(declaration->name + "." + property->name + " " + type_text(property->type));
            }
        }
        return texts;
    }

    static Texts declared_without_objects() {
        Texts texts;
        for (const std::string& text : declared()) {
            if (WITHOUT_OBJECTS.contains(text.substr(0, text.find('.')))) texts.insert(text);
        }
        return texts;
    }

    // As an end of associations with settings, the TCP settings have the keys of an IP endpoint.
    static bool is_keyed_as_another(const std::string& className) {
        return cimserver::same_name(className, "KESTO_TCPSettings");
    }
};

TEST_F(DeclaredProperties, HaveTheTypesThatTheProviderSets) {
    EXPECT_EQ(without(set_by_provider(), declared()), Texts{});
}

TEST_F(DeclaredProperties, AreAllSetBySomeObject) {
    EXPECT_EQ(without(without(declared(), set_by_provider()), declared_without_objects()), Texts{});
}

TEST_F(DeclaredProperties, OfClassesWithoutObjectsAreNeverSet) {
    for (const std::string& className : WITHOUT_OBJECTS) {
        EXPECT_FALSE(observed().properties.contains(className)) << className;
    }
}

TEST_F(DeclaredProperties, NameTheObjectsAsThePathsOfTheProviderDo) {
    ASSERT_FALSE(observed().keys.empty());
    for (const auto& [className, paths] : observed().keys) {
        const ClassDeclaration* declaration = schema().find(className);
        ASSERT_NE(declaration, nullptr) << className;
        const TypedNames keys = key_names(*declaration);
        if (is_keyed_as_another(className)) {
            const TypedNames keysOfEndpoint = key_names(*schema().find("KESTO_IPProtocolEndPoint"));
            EXPECT_EQ(paths, (std::set<TypedNames>{keys, keysOfEndpoint}));
            continue;
        }
        for (const TypedNames& path : paths) {
            EXPECT_EQ(text_of(path), text_of(keys)) << className;
        }
    }
}

} // namespace
} // namespace schema_tests
