// wbemcli as a C++ object: each function is one run of the program against a CIM server, its answer read
// back.
#ifndef KESTO_TESTS_E2E_WBEM_CLIENT_H
#define KESTO_TESTS_E2E_WBEM_CLIENT_H

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/e2e/cim_path.h"

namespace e2e {

// The server answered with a CIM error, or wbemcli could not do its work (code 0).
class WbemError : public std::runtime_error {
  public:
    WbemError(int cimCode, const std::string& text) : std::runtime_error(text), code(cimCode) {}
    const int code;
};

constexpr int CIM_ERR_INVALID_NAMESPACE = 3;
constexpr int CIM_ERR_INVALID_PARAMETER = 4;
constexpr int CIM_ERR_INVALID_CLASS = 5;
constexpr int CIM_ERR_NOT_FOUND = 6;
constexpr int CIM_ERR_NOT_SUPPORTED = 7;

struct CimInstance {
    CimPath path; // of a single get: only the class, since wbemcli echoes the path asked for
    std::vector<std::pair<std::string, std::string>> properties; // in order; text without its quotes

    bool has(std::string_view name) const;
    // The value of a property; throws std::out_of_range when there is none.
    std::string operator[](std::string_view name) const;
    CimPath reference(std::string_view name) const;
    std::vector<std::string> names() const;
};

// The filters of the association operations; empty = not given.
struct Filter {
    std::string assocClass;
    std::string resultClass;
    std::string role;
    std::string resultRole;
};

class WbemClient {
  public:
    // `url` as the server prints it: http://127.0.0.1:5988
    explicit WbemClient(std::string serverUrl, std::string cimNamespace = std::string(NAMESPACE));

    std::vector<CimInstance> enumerate(const std::string& className,
                                       const std::string& properties = "") const;
    std::vector<CimPath> enumerate_names(const std::string& className) const;
    CimInstance get(const CimPath& path, const std::string& properties = "") const;
    std::vector<CimInstance> associators(const CimPath& source, const Filter& filter = {}) const;
    std::vector<CimPath> associator_names(const CimPath& source, const Filter& filter = {}) const;
    // Of the filter, resultClass (the association class wanted) and role count here.
    std::vector<CimInstance> references(const CimPath& source, const Filter& filter = {}) const;
    std::vector<CimPath> reference_names(const CimPath& source, const Filter& filter = {}) const;

    // Any operation: wbemcli's letters for it ("ei"), options, what follows the namespace, and what comes
    // last.
    std::string run(const std::string& operation, const std::vector<std::string>& options,
                    const std::string& object, const std::string& last = "") const;

  private:
    std::string url_;
    std::string nameSpace_;
};

} // namespace e2e

#endif
