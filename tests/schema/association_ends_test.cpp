// The declared ends of the associations. A CIM server asks the provider only for those associations whose
// ends accept the source's class, so that an end which is too narrow loses answers; one that is too wide has
// the server ask for what there is not.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "server/model/cim_class.h"
#include "tests/schema/schema_test.h"

namespace schema_tests {
namespace {

using cimserver::ClassDeclaration;
using Texts = std::set<std::string>;

// What associators lead to besides the far end of the association.
const Texts BESIDES_THE_FAR_END{
    // the far end of an endpoint's hosting system is its tunnel's FCIP endpoint when names are asked for
    "KESTO_SwitchHostedIPAccessPoint: KESTO_IPProtocolEndPoint to KESTO_FCIPProtocolEndPoint",
    // the system that hosts an endpoint is among its settings when names are asked for
    "KESTO_IPElementSettingData: KESTO_IPProtocolEndPoint to KESTO_LogicalComputerSystem",
    // and so it is for an association that the endpoint takes no part in
    "KESTO_TCPEndPointStatisticalData: KESTO_IPProtocolEndPoint to KESTO_LogicalComputerSystem"};

// Nothing below their common superclass has both FCIP and TCP endpoints and no IP endpoints. IP endpoints
// answer what they take no part in with their system, so such an end is to stay the only one.
const NameSet ACCEPTING_IP_ENDPOINTS_IN_PASSING{"KESTO_TCPEndPointStatisticalData"};

// Associations that references give the other way round than they are declared.
const NameSet REFERENCED_CROSSWISE{// the standard has the system first
                                   "KESTO_SwitchHostedIPAccessPoint", "KESTO_SwitchHostedTCPAccessPoint",
                                   // the references of the endpoint, unlike those of the statistics
                                   "KESTO_IPEndPointStatisticalData"};

bool accepts(const std::string& end, const std::string& className) {
    return schema().is_a(className, end);
}

// An association class and its two ends, as declared.
struct Association {
    explicit Association(const std::string& className) : name(declared_name(className)) {
        const ClassDeclaration* declaration = schema().find(className);
        if (declaration != nullptr) ends = declared_ends(*declaration);
        EXPECT_EQ(ends.size(), 2U) << className << " is no association of two ends";
        if (ends.size() != 2U) ends = {{"first", ""}, {"second", ""}};
    }

    const std::string& first() const { return ends.begin()->second; }
    const std::string& second() const { return ends.rbegin()->second; }
    bool accepts_source(const std::string& className) const {
        return accepts(first(), className) || accepts(second(), className);
    }
    // The two objects can be its ends, in whichever roles.
    bool joins(const std::string& a, const std::string& b) const {
        return (accepts(first(), a) && accepts(second(), b)) || (accepts(first(), b) && accepts(second(), a));
    }

    std::string name;
    Ends ends;
};

// The classes that stand at each end: those of all pairs that the association accepts, in the roles that the
// declared ends give them, whichever way round the provider has them.
class StandingThere {
  public:
    explicit StandingThere(const Association& association) : association_(association) {}

    void take(const std::string& a, const std::string& b) {
        if (accepts(association_.first(), a) && accepts(association_.second(), b)) {
            first.insert(a);
            second.insert(b);
        } else if (association_.joins(a, b)) {
            first.insert(b);
            second.insert(a);
        }
    }

    NameSet first, second;

  private:
    const Association& association_;
};

std::string nearest_common_superclass(const NameSet& classes) {
    for (const ClassDeclaration* at = schema().find(*classes.begin()); at != nullptr;
         at = schema().find(at->superclass)) {
        const auto isAbove = [at](const std::string& className) { return accepts(at->name, className); };
        if (std::all_of(classes.begin(), classes.end(), isAbove)) return at->name;
    }
    return "";
}

class AssociationEnds : public ObservedProvider {
  protected:
    StandingThere standing_at(const Association& association) {
        StandingThere classes(association);
        if (const auto found = observed().ends.find(association.name); found != observed().ends.end()) {
            for (const Ends& ends : found->second) {
                classes.take(ends.begin()->second, ends.rbegin()->second);
            }
        }
        if (const auto found = observed().steps.find(association.name); found != observed().steps.end()) {
            for (const auto& [source, far] : found->second) {
                classes.take(source, far);
            }
        }
        return classes;
    }
};

TEST_F(AssociationEnds, HaveTheRolesOfTheReferences) {
    ASSERT_FALSE(observed().ends.empty());
    for (const auto& [className, all] : observed().ends) {
        const Association association(className);
        for (const Ends& ends : all) {
            ASSERT_EQ(ends.size(), 2U) << className;
            EXPECT_EQ(ends.begin()->first, association.ends.begin()->first) << className;
            EXPECT_EQ(ends.rbegin()->first, association.ends.rbegin()->first) << className;
        }
    }
}

TEST_F(AssociationEnds, AcceptEveryPairOfObjectsThatTheProviderTiesTogether) {
    Texts refused;
    for (const auto& [className, all] : observed().ends) {
        const Association association(className);
        for (const Ends& ends : all) {
            const std::string a = declared_name(ends.begin()->second);
            const std::string b = declared_name(ends.rbegin()->second);
            if (association.joins(a, b)) continue;
            refused.insert(association.name + ": " + std::min(a, b) + ", " + std::max(a, b));
        }
    }
    EXPECT_EQ(refused, Texts{});
}

TEST_F(AssociationEnds, StandInTheRolesThatTheReferencesGiveThem) {
    ASSERT_FALSE(observed().referenced.empty());
    NameSet crosswise;
    for (const auto& [className, all] : observed().referenced) {
        const Association association(className);
        for (const Ends& ends : all) {
            const bool straight = accepts(association.first(), ends.begin()->second) &&
                                  accepts(association.second(), ends.rbegin()->second);
            if (!straight) crosswise.insert(association.name);
        }
    }
    EXPECT_EQ(crosswise, REFERENCED_CROSSWISE);
}

TEST_F(AssociationEnds, AcceptEverySource) {
    ASSERT_FALSE(observed().sources.empty());
    for (const auto& [className, sources] : observed().sources) {
        const Association association(className);
        for (const std::string& source : sources) {
            EXPECT_TRUE(association.accepts_source(source)) << className << " from " << source;
        }
    }
}

TEST_F(AssociationEnds, AcceptEveryObjectThatAnAcceptedSourceLeadsTo) {
    Texts refused;
    for (const auto& [className, steps] : observed().steps) {
        const Association association(className);
        for (const auto& [source, far] : steps) {
            if (!association.accepts_source(source) || association.joins(source, far)) continue;
            refused.insert(association.name + ": " + declared_name(source) + " to " + declared_name(far));
        }
    }
    EXPECT_EQ(refused, BESIDES_THE_FAR_END);
}

TEST_F(AssociationEnds, AreTheNearestSuperclassesOfWhatStandsThere) {
    for (const ClassDeclaration* declaration : concrete_classes()) {
        // This one is never answered with. It declares what the class that is answered declares.
        const std::string& answered =
            declaration->name == "KESTO_FCIPTCPEnpoint" ? "KESTO_FCIPTCPEndpoint" : declaration->name;
        if (!declaration->is_association()) continue;
        const Association association(declaration->name);
        const StandingThere classes = standing_at(Association(answered));
        ASSERT_FALSE(classes.first.empty()) << declaration->name;
        EXPECT_EQ(association.first(), nearest_common_superclass(classes.first)) << declaration->name;
        EXPECT_EQ(association.second(), nearest_common_superclass(classes.second)) << declaration->name;
    }
}

TEST_F(AssociationEnds, KeepIpEndpointsFromAssociationsThatTheyTakeNoPartIn) {
    for (const ClassDeclaration* declaration : concrete_classes()) {
        if (!declaration->is_association()) continue;
        const Association association(declaration->name);
        if (!association.accepts_source("KESTO_IPProtocolEndPoint")) continue;
        if (ACCEPTING_IP_ENDPOINTS_IN_PASSING.contains(declaration->name)) continue;
        const auto found = observed().sources.find(declaration->name);
        EXPECT_TRUE(found != observed().sources.end() && found->second.contains("KESTO_IPProtocolEndPoint"))
            << declaration->name;
    }
}

} // namespace
} // namespace schema_tests
