// The fixture of the tests that traverse associations: the first tunnel's objects as sources.
#ifndef KESTO_TESTS_E2E_TRAVERSAL_H
#define KESTO_TESTS_E2E_TRAVERSAL_H

#include <string>
#include <vector>

#include "tests/e2e/served_switch.h"

namespace e2e {

using Names = std::vector<std::string>;

Names classes_of(const std::vector<CimPath>& paths);
Names classes_of(const std::vector<CimInstance>& instances);
// Class names arrive in the spelling of the place that made them; they are one class in any letter case.
Names folded(Names names);

class Traversal : public ServedSwitch {
  protected:
    // An object that the association class leads to; throws std::runtime_error when there is none.
    CimPath hop(const CimPath& source, const std::string& association) const;
    // The object of this class that belongs to the first tunnel.
    CimPath source(const std::string& className) const;
};

} // namespace e2e

#endif
