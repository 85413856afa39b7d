// A CIM object path as wbemcli writes it and takes it:
//   127.0.0.1:5988/root/cimv2:CLASS.Key="text",Key=5,Reference={root/cimv2:CLASS.Key="text"}
#ifndef KESTO_TESTS_E2E_CIM_PATH_H
#define KESTO_TESTS_E2E_CIM_PATH_H

#include <string>
#include <string_view>
#include <vector>

namespace e2e {

// The namespace that all end-to-end tests work in.
inline constexpr std::string_view NAMESPACE = "root/cimv2";

struct CimKey;

struct CimPath {
    std::string className;
    std::vector<CimKey> keys;

    // Throws std::invalid_argument when the text is no object path. Host and namespace are left out.
    static CimPath parse(std::string_view text);

    // The value of a key, whatever the letter case of its name; empty when there is none.
    std::string key(std::string_view name) const;
    // The path after a reference key; throws std::out_of_range when there is none.
    const CimPath& reference(std::string_view name) const;
    std::vector<std::string> key_names() const;

    // As wbemcli takes it on its command line, after the namespace's colon. A reference cannot have
    // reference keys of its own there.
    std::string command_line_text() const;
    // Equal for two paths exactly when CIM takes them for the same object: names ignore letter case, and the
    // order of the keys does not matter.
    std::string identity() const;
};

struct CimKey {
    std::string name;
    std::string value; // without its quotes; of a reference, empty
    bool quoted = false;
    std::vector<CimPath> reference; // one path, or none when this is no reference
};

std::string lower_case(std::string_view text);

} // namespace e2e

#endif
