// The probe provider's associations.
//
// Probe_Link joins thing "one" (Left) and thing "two" (Right), and Probe_Twin joins the same two. Probe_Part
// joins thing "one" (Whole) and part "p" (Piece), but only the part knows of the association object. Asked
// for no class the provider answers nothing; asked for one that it does not know it answers with junk.
#ifndef KESTO_TESTS_SERVER_PROBE_ASSOCIATIONS_H
#define KESTO_TESTS_SERVER_PROBE_ASSOCIATIONS_H

#include <cmpidt.h>

#include "tests/server/probe/objects.h"

namespace probe {

CMPIStatus associator_names(const Asked& asked, const char* association);
CMPIStatus associators(const Asked& asked, const char* association);
CMPIStatus reference_names(const Asked& asked, const char* association);
CMPIStatus references(const Asked& asked, const char* association);

} // namespace probe

#endif
