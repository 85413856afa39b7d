// What a provider prints while it works, and what its callers and tests look for in it.
#ifndef KESTO_TESTS_SUPPORT_TRACES_H
#define KESTO_TESTS_SUPPORT_TRACES_H

#include <cstddef>
#include <string>
#include <vector>

namespace test_support {

// "Entering get_ip_pe_associators" and "Exiting get_ip_pe_associators", each a line.
std::string entering(const std::string& function);
std::string exiting(const std::string& function);
// The line that shows where in a function the provider is.
std::string line_trace(const std::string& function, int line);

// How often the text contains the part.
std::size_t occurrences(const std::string& text, const std::string& part);

// The functions whose entry was traced, in order.
std::vector<std::string> functions_entered(const std::string& output);

// The calls among these that go to this service or broker function.
std::vector<std::string> calls_of(const std::vector<std::string>& calls, const std::string& name);

} // namespace test_support

#endif
