// What the reference functions know: which association classes a source answers, how it reads the key, and
// the association that it returns. Both functions of a source take the same rows.
#ifndef KESTO_TESTS_ASSOC_REFERENCE_ROWS_H
#define KESTO_TESTS_ASSOC_REFERENCE_ROWS_H

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "include/traversal.h"
#include "tests/assoc/golden_objects.h"
#include "tests/assoc/golden_switch.h"
#include "tests/support/recorded.h"

namespace golden {

// The line that a source prints with the association class asked for.
enum class ResultLine { None, Usual, Starred, Spaced };

struct ReferenceSource {
    const char* name; // the x of get_<x>_references
    ReferenceNamesFn* names;
    ReferencesFn* instances;
    ResultLine line;

    std::string function(Form form) const;
    std::string result_line(const std::string& asked) const;
};
extern const std::vector<const ReferenceSource*> REFERENCE_SOURCES;

// Where an end's object comes from: the tunnel that the key names, or the key itself, read as a port.
enum class From { Tunnel, Key };

struct ReferenceEnd {
    End end;
    const char* className; // as handed to what makes the path, and so as the client sees it
    From from = From::Tunnel;
};

inline constexpr const char* AS_ASKED = nullptr; // the association's class is the caller's own string

struct ReferenceRow {
    const ReferenceSource* source;
    const char* asked; // the association class, as the source spells it
    Reading reading;
    Kind kind;
    const char* name; // the association's class, or AS_ASKED
    ReferenceEnd first, second;

    bool has_end(bool (*matches)(const ReferenceEnd& end)) const { return matches(first) || matches(second); }
};
extern const std::vector<ReferenceRow> REFERENCE_ROWS;

// The association of the row for this tunnel or, where the key is a port's if-index, this port. The key is
// the one asked with, for the ends that are made from it.
test_support::RecordedPath expected(const ReferenceRow& row, const std::string& asked, const Tunnel& tunnel,
                                    const std::string& key);
test_support::RecordedPath expected_for_port(const ReferenceRow& row, const std::string& asked,
                                             std::uint32_t ifIndex);
void PrintTo(const ReferenceRow& row, std::ostream* out);

} // namespace golden

#endif
