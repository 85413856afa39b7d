// Text in another code page than UTF-8, which is the server's own.
#ifndef KESTO_SERVER_BROKER_CODEPAGE_H
#define KESTO_SERVER_BROKER_CODEPAGE_H

#include <cmpidt.h>

#include <optional>
#include <string>
#include <string_view>

namespace cimserver {

// The text as a terminated block of the current pool. NULL with CMPI_RC_ERR_NOT_IN_CODEPAGE for a character
// that the code page lacks, with CMPI_RC_ERR_INVALID_PARAMETER for an unknown code page.
char* encode_for(CMPICodepageID codepage, std::string_view text, CMPIStatus* rc);

// Terminated data of a code page as UTF-8; nothing, with the same codes, when it is not.
std::optional<std::string> decode_from(CMPICodepageID codepage, const char* data, CMPIStatus* rc);

} // namespace cimserver

#endif
