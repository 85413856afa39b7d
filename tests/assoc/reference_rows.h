// The rows of the reference members: which association class each member knows, how it reads the key, and
// the association that it answers with. The names member and the instances member of a source take the same
// rows.
#ifndef KESTO_TESTS_ASSOC_REFERENCE_ROWS_H
#define KESTO_TESTS_ASSOC_REFERENCE_ROWS_H

#include <iosfwd>
#include <string>
#include <vector>

#include "include/traversal.h"
#include "tests/assoc/golden_switch.h"

namespace golden {

// The line that a member prints with the association class asked for.
enum class ResultLine { None, Usual, Starred, Spaced };
std::string result_line(ResultLine line, const std::string& associationClass);

// Where an end's object comes from when it is not the tunnel that the key names.
enum class From { Tunnel, Key };

struct ReferenceEnd {
    End end;
    const char* className; // as handed to what makes the path, and so as the client sees it
    From from = From::Tunnel;
};

struct ReferenceMember {
    const char* source; // the x of get_<x>_references
    ReferenceNamesFn* names;
    ReferencesFn* references;
    ResultLine line;
};

inline constexpr const char* OWN = nullptr; // the association is named by the caller's own string

struct ReferenceRow {
    const ReferenceMember* member;
    const char* tested; // the association class, as the member spells it
    int mode;           // of the link lookup; 0 = the key is a port's if-index
    Kind kind;
    const char* name; // the association's class, or OWN
    ReferenceEnd first, second;
};

extern const std::vector<ReferenceMember> REFERENCE_MEMBERS;
extern const std::vector<ReferenceRow> REFERENCE_ROWS;

std::string row_name(const ReferenceRow& row); // for test names: "fcip_pe_KESTO_FCIPTCPEndpoint"
// The association of the row for this tunnel (rows with a mode) or port (rows without one). The key is the
// one asked with, for the ends that are made from it.
test_support::RecordedPath expected(const ReferenceRow& row, const std::string& asked, const Tunnel& tunnel,
                                    const std::string& key);
test_support::RecordedPath expected_for_port(const ReferenceRow& row, const std::string& asked,
                                             std::uint32_t ifIndex);
void PrintTo(const ReferenceRow& row, std::ostream* out);
void PrintTo(const ReferenceMember& member, std::ostream* out);

} // namespace golden

#endif
