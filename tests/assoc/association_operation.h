// The four association operations as their suites call them.
#ifndef KESTO_TESTS_ASSOC_ASSOCIATION_OPERATION_H
#define KESTO_TESTS_ASSOC_ASSOCIATION_OPERATION_H

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/assoc/association_test.h"
#include "tests/support/provider_test.h"
#include "tests/support/recording_broker.h"
#include "tests/support/traces.h"

namespace golden {

enum class Operation { Associators, AssociatorNames, References, ReferenceNames };
inline constexpr Operation EVERY_OPERATION[] = {Operation::Associators, Operation::AssociatorNames,
                                                Operation::References, Operation::ReferenceNames};

inline std::string text_of(Operation operation) {
    switch (operation) {
        case Operation::Associators:
            return "Associators";
        case Operation::AssociatorNames:
            return "AssociatorNames";
        case Operation::References:
            return "References";
        case Operation::ReferenceNames:
            break;
    }
    return "ReferenceNames";
}
inline std::string name_of(Operation operation) {
    return "FCIP_" + text_of(operation);
}

inline constexpr const char* UNKNOWN = "KESTO_NoSuchAssociation";

// The traversal functions entered, in order.
inline std::vector<std::string> traversals_entered(const std::string& output) {
    std::vector<std::string> found = test_support::functions_entered(output);
    std::erase_if(found, [](const std::string& function) {
        return !function.starts_with("get_") || (function.find("_associator") == std::string::npos &&
                                                 function.find("_reference") == std::string::npos);
    });
    return found;
}

class AssociationOperation : public AssociationTest {
  protected:
    Answer ask(Operation operation, const std::string& className, const std::vector<test_support::Key>& keys,
               const char* asked) {
        switch (operation) {
            case Operation::Associators:
                return associators(className, keys, asked);
            case Operation::AssociatorNames:
                return associator_names(className, keys, asked);
            case Operation::References:
                return references(className, keys, asked);
            case Operation::ReferenceNames:
                break;
        }
        return reference_names(className, keys, asked);
    }
    static void expect_ok(const Answer& answer) {
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_EQ(answer.doneCalls, 0U);
    }
    Answer expect_no_source(Operation operation, const char* source, const char* keyName) {
        SCOPED_TRACE(name_of(operation) + " of " + source);
        Answer answer = ask(operation, source, {{keyName, "7"}}, "KESTO_FCIPTCPEndpoint");
        EXPECT_TRUE(answer.returned.empty());
        EXPECT_TRUE(traversals_entered(answer.output).empty());
        return answer;
    }
};

} // namespace golden

#endif
