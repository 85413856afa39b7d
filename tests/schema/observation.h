// What the provider really answers: every property, key and reference of every object, on two switches.
//
// All registered classes are enumerated, everything that has a path is fetched by it, and from each of those
// objects every registered association is followed, in all four ways, and so on from what that leads to.
// Nothing here knows the classes: their names come from the list of registrations and from the answers.
#ifndef KESTO_TESTS_SCHEMA_OBSERVATION_H
#define KESTO_TESTS_SCHEMA_OBSERVATION_H

#include <cmpidt.h>

#include <map>
#include <set>
#include <string>
#include <utility>

#include "server/model/text.h"
#include "tests/support/provider_test.h"

namespace schema_tests {

// By the names of classes, which the provider does not always spell alike.
template <typename T>
using ByClass = std::map<std::string, T, cimserver::NameOrder>;
using cimserver::NameSet;

using TypedNames = std::set<std::pair<std::string, CMPIType>>; // texts are CMPI_string
using Ends = std::map<std::string, std::string>;               // the class in each role
using Step = std::pair<std::string, std::string>;              // of a traversal: the class here, and there

struct Observation {
    ByClass<TypedNames> properties;     // that some instance of the class had
    ByClass<std::set<TypedNames>> keys; // of each path of the class, in references, too
    ByClass<std::set<Ends>> ends;       // of each association, as an instance and as a path
    ByClass<std::set<Ends>> referenced; // of those among them that references gave

    // By the association class that was asked for. Associator names count as steps only: those of an IP
    // endpoint answer every class that they do not know with the system that hosts it.
    ByClass<NameSet> sources;
    ByClass<std::set<Step>> steps;
};

// A registered class, as packaging/classes.txt lists it.
struct RegisteredClass {
    bool instances = false;
    bool associations = false;
};
ByClass<RegisteredClass> registered_classes();

// A provider that was looked at once for all tests of the program.
class ObservedProvider : public test_support::ProviderTest {
  protected:
    const Observation& observed();
};

} // namespace schema_tests

#endif
