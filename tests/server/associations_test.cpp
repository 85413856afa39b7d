// Traversal of associations: what the provider leaves to the server.
#include <cmpidt.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "server/model/request.h"
#include "server/model/result_sink.h"
#include "server/provider/served.h"
#include "tests/server/probe_service.h"

namespace {

class Associations : public ProbeService {
  protected:
    Response traverse(const std::string& method, const std::string& source,
                      const std::string& filter = "") const {
        return ask(method, parameter("ObjectName", source) + filter);
    }
    // The far ends as class and key value.
    std::vector<std::string> far_ends(const std::string& source, const std::string& filter = "") const {
        const Response response = traverse("AssociatorNames", source, filter);
        EXPECT_EQ(response.error_code(), 0);
        std::vector<std::string> ends;
        const auto classes = response.texts("//OBJECTPATH/INSTANCEPATH/INSTANCENAME/@CLASSNAME");
        const auto keys = response.texts("//OBJECTPATH/INSTANCEPATH/INSTANCENAME/KEYBINDING/KEYVALUE");
        for (std::size_t i = 0; i < classes.size(); ++i) {
            ends.push_back(classes[i] + " " + keys.at(i));
        }
        return ends;
    }
};

using List = std::vector<std::string>;

std::string association(const std::string& name) {
    return parameter("AssocClass", class_name(name));
}
std::string result_class(const std::string& name) {
    return parameter("ResultClass", class_name(name));
}
std::string role(const std::string& name) {
    return parameter("Role", value(name));
}
std::string result_role(const std::string& name) {
    return parameter("ResultRole", value(name));
}
std::string odd() {
    return instance_name("Probe_Odd", key("Name", "o"));
}
std::string piece() {
    return instance_name("Probe_Piece", key("InstanceID", "p"));
}

TEST_F(Associations, ANamedClassIsAskedForAsItIs) {
    EXPECT_EQ(far_ends(thing_name("one"), association("probe_LINK")), List{"Probe_Thing two"});
    EXPECT_EQ(far_ends(odd(), association("PROBE_unheard")), List{"Probe_Junk PROBE_unheard"});
}

TEST_F(Associations, WithoutAClassEveryClassOfTheSourceIsAskedForAndMerged) {
    // Probe_Link and Probe_Twin lead to the same thing, differently spelled; junk classes are not asked for.
    EXPECT_EQ(far_ends(thing_name("one")), (List{"Probe_Thing two", "Probe_Piece p"}));
    EXPECT_EQ(far_ends(thing_name("two")), List{"Probe_Thing one"});
    EXPECT_EQ(far_ends(piece()), List{"Probe_Thing one"});
}

TEST_F(Associations, InstancesAreMergedByTheirNames) {
    const Response response = traverse("Associators", thing_name("one"));
    EXPECT_EQ(response.texts("//VALUE.OBJECTWITHPATH/INSTANCE/@CLASSNAME"),
              (List{"Probe_Thing", "Probe_Piece"}));
    EXPECT_EQ(response.count("//VALUE.OBJECTWITHPATH/INSTANCEPATH"), 2U);
    EXPECT_EQ(response.property("Colour"), "green");
}

TEST_F(Associations, ReferencesOfEveryClassAreMerged) {
    EXPECT_EQ(traverse("ReferenceNames", thing_name("one"))
                  .texts("//OBJECTPATH/INSTANCEPATH/INSTANCENAME/@CLASSNAME"),
              (List{"Probe_Link", "Probe_Twin"}));
    EXPECT_EQ(traverse("References", thing_name("one")).texts("//VALUE.OBJECTWITHPATH/INSTANCE/@CLASSNAME"),
              (List{"Probe_Link", "Probe_Twin"}));
}

TEST_F(Associations, ReferencesOfANamedClass) {
    const Response names = traverse("ReferenceNames", thing_name("one"), result_class("Probe_Link"));
    EXPECT_EQ(names.texts("//OBJECTPATH/INSTANCEPATH/INSTANCENAME/@CLASSNAME"), List{"Probe_Link"});
    EXPECT_EQ(names.texts("//OBJECTPATH/INSTANCEPATH/INSTANCENAME/KEYBINDING/@NAME"),
              (List{"Left", "Right"}));
    const Response instances = traverse("References", thing_name("one"), result_class("Probe_Link"));
    EXPECT_EQ(instances.texts("//INSTANCE/PROPERTY.REFERENCE/@NAME"), (List{"Left", "Right"}));
}

TEST_F(Associations, PathsNameHostAndNamespace) {
    const Response response = traverse("AssociatorNames", thing_name("one"), association("Probe_Link"));
    EXPECT_EQ(response.text("//OBJECTPATH/INSTANCEPATH/NAMESPACEPATH/HOST"), "testhost");
    EXPECT_EQ(response.texts("//OBJECTPATH/INSTANCEPATH/NAMESPACEPATH/LOCALNAMESPACEPATH/NAMESPACE/@NAME"),
              (List{"root", "cimv2"}));
}

TEST_F(Associations, ResultClassLetsItsOwnObjectsPass) {
    EXPECT_EQ(far_ends(thing_name("one"), result_class("PROBE_piece")), List{"Probe_Piece p"});
    EXPECT_EQ(far_ends(thing_name("one"), result_class("Probe_Link")), List{});
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Link") + result_class("Probe_Piece")), List{});
}

TEST_F(Associations, RoleIsTheSourcesRole) {
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Link") + role("left")), List{"Probe_Thing two"});
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Link") + role("Right")), List{});
    EXPECT_EQ(far_ends(thing_name("two"), association("Probe_Link") + role("Right")),
              List{"Probe_Thing one"});
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Link") + role("Middle")), List{});
}

TEST_F(Associations, ResultRoleIsTheFarEndsRole) {
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Link") + result_role("Right")),
              List{"Probe_Thing two"});
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Link") + result_role("Left")), List{});
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Link") + role("Left") + result_role("Right")),
              List{"Probe_Thing two"});
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Link") + role("Left") + result_role("Left")),
              List{});
}

TEST_F(Associations, RolesApplyToEachClassOfATraversalWithoutOne) {
    EXPECT_EQ(far_ends(thing_name("one"), role("Left")), List{"Probe_Thing two"});
    EXPECT_EQ(far_ends(thing_name("one"), role("Whole")), List{"Probe_Piece p"});
}

TEST_F(Associations, TheFarEndsReferencesShowTheRolesWhereTheSourcesDoNot) {
    EXPECT_EQ(traverse("ReferenceNames", thing_name("one"), result_class("Probe_Part")).count("//OBJECTPATH"),
              0U);
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Part") + role("Whole") + result_role("Piece")),
              List{"Probe_Piece p"});
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Part") + role("Piece")), List{});
}

TEST_F(Associations, RolesThatNoReferenceShowsAreThoseOfTheDeclaredEnds) {
    const List found{"Probe_Junk Probe_Unheard"};
    EXPECT_EQ(far_ends(odd(), association("Probe_Unheard") + role("Left")), found);
    EXPECT_EQ(far_ends(odd(), association("Probe_Unheard") + role("Left") + result_role("Right")), found);
    EXPECT_EQ(far_ends(odd(), association("Probe_Unheard") + role("Left") + result_role("Left")), List{});
    EXPECT_EQ(far_ends(odd(), association("Probe_Unheard") + role("Middle")), List{});
}

TEST_F(Associations, RolesApplyToInstancesToo) {
    const std::string left = association("Probe_Link") + role("Left");
    EXPECT_EQ(traverse("Associators", thing_name("one"), left).count("//INSTANCE"), 1U);
    EXPECT_EQ(traverse("Associators", thing_name("two"), left).count("//INSTANCE"), 0U);
}

TEST_F(Associations, RoleSelectsReferences) {
    EXPECT_EQ(traverse("ReferenceNames", thing_name("one"), role("Left")).count("//OBJECTPATH"), 2U);
    EXPECT_EQ(traverse("ReferenceNames", thing_name("one"), role("Right")).count("//OBJECTPATH"), 0U);
    EXPECT_EQ(traverse("References", thing_name("two"), role("Right")).count("//VALUE.OBJECTWITHPATH"), 2U);
}

TEST_F(Associations, AnErrorReplacesWhatWasFound) {
    const Response response = traverse("AssociatorNames", odd(), association("Probe_Broken"));
    EXPECT_EQ(response.error_code(), 1);
    EXPECT_EQ(response.error_description(), "no way");
}

TEST_F(Associations, PropertyListsLimitInstances) {
    const Response response =
        traverse("Associators", thing_name("one"),
                 association("Probe_Link") + parameter("PropertyList", value_array({"Colour"})));
    EXPECT_EQ(response.texts("//INSTANCE/PROPERTY/@NAME"), List{"Colour"});
}

TEST_F(Associations, AClassAboveStandsForAllThatAreRegistered) {
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Connection")), List{"Probe_Thing two"});
    EXPECT_EQ(traverse("ReferenceNames", thing_name("one"), result_class("Probe_Connection"))
                  .texts("//OBJECTPATH/INSTANCEPATH/INSTANCENAME/@CLASSNAME"),
              (List{"Probe_Link", "Probe_Twin"}));
}

TEST_F(Associations, ASourceThatIsNoDeclaredEndLeadsNowhere) {
    EXPECT_EQ(far_ends(thing_name("one"), association("Probe_Unheard")), List{});
}

TEST_F(Associations, ResultClassesAboveLetTheObjectsPass) {
    EXPECT_EQ(far_ends(thing_name("one"), result_class("Probe_Base")), List{"Probe_Thing two"});
}

TEST_F(Associations, ClassesThatAreNotThereOrNoAssociationsAreRefused) {
    const auto error = [this](const std::string& source, const std::string& filter) {
        const Response response = traverse("Associators", source, filter);
        EXPECT_EQ(response.error_code(), 4);
        return response.error_description();
    };
    EXPECT_EQ(error(thing_name("one"), association("Probe_Nowhere")), "there is no class Probe_Nowhere");
    EXPECT_EQ(error(thing_name("one"), result_class("Probe_Nowhere")), "there is no class Probe_Nowhere");
    EXPECT_EQ(error(thing_name("one"), association("Probe_Thing")), "Probe_Thing is no association class");
    EXPECT_EQ(error(instance_name("Probe_Nowhere", key("Name", "n")), ""), "there is no class Probe_Nowhere");
}

TEST_F(Associations, AnAssociationThatTheProviderDoesNotGetIsFoundAmongTheReferencesOfItsEnds) {
    const auto get = [this](const std::string& left) {
        return ask("GetInstance",
                   parameter("InstanceName",
                             instance_name("Probe_Link", reference_key("Left", thing_name(left)) +
                                                             reference_key("Right", thing_name("two")))));
    };
    EXPECT_EQ(get("one").texts("//IRETURNVALUE/INSTANCE/PROPERTY.REFERENCE/@NAME"), (List{"Left", "Right"}));
    EXPECT_EQ(get("three").error_code(), 6);
}

TEST_F(Associations, OnlyTheEndsThatTheClassDeclaresAreAskedForTheirReferences) {
    unsigned asked = 0;
    std::vector<cimserver::ServedNameSpace> counted = probe_name_spaces(provider);
    for (cimserver::ServedClass& served : counted.front().classes) {
        served.provider = [&asked](const cimserver::Request& request, cimserver::ResultSink&) {
            const bool references = request.operation == cimserver::Operation::References;
            if (references) ++asked;
            return cimserver::Outcome::error(references ? CMPI_RC_OK : CMPI_RC_ERR_NOT_FOUND);
        };
    }
    const cimserver::Operations counting(std::move(counted));
    const cimserver::CimXmlService counter(counting, {.host = "testhost"});
    std::string keys = reference_key("Left", thing_name("one")) + reference_key("Right", thing_name("two"));
    for (unsigned number = 0; number < 100; ++number) {
        keys += reference_key("Other" + std::to_string(number), thing_name("one"));
    }
    const auto reply = counter.answer(
        post(imethod_call("GetInstance", parameter("InstanceName", instance_name("Probe_Link", keys))),
             "GetInstance"));
    EXPECT_EQ(Response(reply.body).error_code(), 6);
    EXPECT_EQ(asked, 2U);
}

TEST_F(Associations, ASourceWithoutKeysIsAClass) {
    EXPECT_EQ(
        traverse("AssociatorNames", instance_name("Probe_Piece", "")).text("//CLASSPATH/CLASSNAME/@NAME"),
        "Probe_Base");
}

TEST_F(Associations, AProviderWithoutAssociationsDoesNotSupportThem) {
    const cimserver::Provider instancesOnly(PROBE_PROVIDER, "InstancesOnly", broker);
    const cimserver::Operations bare(probe_name_spaces(instancesOnly));
    const cimserver::CimXmlService limited(bare, {.host = "testhost"});
    const auto reply = limited.answer(
        post(imethod_call("AssociatorNames", parameter("ObjectName", thing_name("one"))), "AssociatorNames"));
    EXPECT_EQ(Response(reply.body).error_code(), 7);
}

} // namespace
