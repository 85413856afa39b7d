// The rows of the associator members: which association class each member knows, how it reads the key, and
// what it finds at the far end. Names and instances have a table each, since they differ on purpose.
#ifndef KESTO_TESTS_ASSOC_ASSOCIATOR_ROWS_H
#define KESTO_TESTS_ASSOC_ASSOCIATOR_ROWS_H

#include <iosfwd>
#include <string>
#include <vector>

#include "include/traversal.h"
#include "tests/assoc/golden_switch.h"

namespace golden {

struct FarEnd {
    End end;
    const char* className;
};

template <typename Function>
struct AssociatorMember {
    const char* source; // the x of get_<x>_associators
    const char* name;   // the whole name
    Function* function;
};

template <typename Function>
struct AssociatorRow {
    const AssociatorMember<Function>* member;
    const char* tested; // the association class, as the member spells it
    int mode;           // of the link lookup; 0 = the key is a port's if-index
    std::vector<FarEnd> far;
};

using AssociatorNamesMember = AssociatorMember<AssociatorNamesFn>;
using AssociatorsMember = AssociatorMember<AssociatorsFn>;
using AssociatorNamesRow = AssociatorRow<AssociatorNamesFn>;
using AssociatorsRow = AssociatorRow<AssociatorsFn>;

extern const std::vector<AssociatorNamesMember> ASSOCIATOR_NAMES_MEMBERS;
extern const std::vector<AssociatorsMember> ASSOCIATORS_MEMBERS;
extern const std::vector<AssociatorNamesRow> ASSOCIATOR_NAMES_ROWS;
extern const std::vector<AssociatorsRow> ASSOCIATORS_ROWS;

template <typename Function>
std::string row_name(const AssociatorRow<Function>& row) {
    return std::string(row.member->source) + "_" + row.tested;
}

template <typename Function>
void PrintTo(const AssociatorRow<Function>& row, std::ostream* out) {
    *out << row_name(row);
}

template <typename Function>
void PrintTo(const AssociatorMember<Function>& member, std::ostream* out) {
    *out << member.name;
}

} // namespace golden

#endif
