// What the associator functions know: which association classes the two functions of each source answer, how
// they read the key, and what they find at the far end. Names and instances differ on purpose.
#ifndef KESTO_TESTS_ASSOC_ASSOCIATOR_ROWS_H
#define KESTO_TESTS_ASSOC_ASSOCIATOR_ROWS_H

#include <iosfwd>
#include <string>
#include <vector>

#include "include/traversal.h"
#include "tests/assoc/golden_objects.h"
#include "tests/assoc/golden_switch.h"

namespace golden {

struct AssociatorSource {
    const char* name; // the x of get_<x>_associators
    AssociatorNamesFn* names;
    AssociatorsFn* instances;

    std::string function(Form form) const;
};
extern const std::vector<const AssociatorSource*> ASSOCIATOR_SOURCES;

struct FarEnd {
    End end;
    const char* className;
};

// An association class that a source answers, in one form.
struct AssociatorRow {
    Form form;
    const AssociatorSource* source;
    const char* asked; // the association class, as the source spells it
    Reading reading;
    std::vector<FarEnd> far; // in the order returned
};
const std::vector<AssociatorRow>& associator_rows();
void PrintTo(const AssociatorRow& row, std::ostream* out);

} // namespace golden

#endif
