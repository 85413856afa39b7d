#include "server/cimxml/http_binding.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "server/model/text.h"

namespace cimserver {

namespace {

constexpr std::string_view EXTENSION = "http://www.dmtf.org/cim/mapping/http/v1.0";
constexpr std::string_view CONTENT_TYPE = "application/xml; charset=\"utf-8\"";

std::string_view without_quotes(std::string_view text) {
    text = trimmed(text);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') return text.substr(1, text.size() - 2);
    return text;
}

// The value of a parameter in a header like "text/xml; charset=utf-8"; empty when it has none.
std::string_view header_parameter(std::string_view header, std::string_view name) {
    for (std::size_t at = header.find(';'); at != std::string_view::npos;) {
        const std::size_t next = header.find(';', at + 1);
        const std::string_view parameter =
            header.substr(at + 1, next == std::string_view::npos ? next : next - at - 1);
        const std::size_t equals = parameter.find('=');
        if (equals != std::string_view::npos && same_name(trimmed(parameter.substr(0, equals)), name)) {
            return without_quotes(parameter.substr(equals + 1));
        }
        at = next;
    }
    return {};
}

bool is_xml_in_utf8(std::string_view contentType) {
    const std::string_view type = trimmed(contentType.substr(0, contentType.find(';')));
    const std::string_view charset = header_parameter(contentType, "charset");
    return (same_name(type, "application/xml") || same_name(type, "text/xml")) &&
           (charset.empty() || same_name(charset, "utf-8") || same_name(charset, "utf8") ||
            same_name(charset, "us-ascii"));
}

// Undoes %-escapes; a % without two digits stays what it is, and then matches nothing.
std::string unescaped(std::string_view text) {
    const auto digit = [](char c) {
        constexpr std::string_view DIGITS = "0123456789abcdef";
        return DIGITS.find(static_cast<char>(c >= 'A' && c <= 'F' ? c - 'A' + 'a' : c));
    };
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%' && i + 2 < text.size() &&
                            digit(text[i + 1]) != std::string_view::npos &&
                            digit(text[i + 2]) != std::string_view::npos;
        if (escape) {
            result += static_cast<char>(digit(text[i + 1]) * 16 + digit(text[i + 2]));
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

// The number that an M-POST gives to the extension: "http://...; ns=48" or "...; ns=\"48\"".
std::string extension_prefix(const HttpRequest& request) {
    const std::string* man = request.header("Man");
    const std::string_view declared =
        man != nullptr ? without_quotes(std::string_view(*man).substr(0, man->find(';'))) : "";
    const std::string_view number = man != nullptr ? header_parameter(*man, "ns") : "";
    const bool digits = !number.empty() && std::all_of(number.begin(), number.end(),
                                                       [](char c) { return c >= '0' && c <= '9'; });
    if (declared != EXTENSION || !digits) {
        throw HttpError(NOT_EXTENDED, "",
                        "M-POST needs the header Man: " + std::string(EXTENSION) + "; ns=NN");
    }
    return std::string(number) + "-";
}

} // namespace

CimHeaders::CimHeaders(const HttpRequest& request) : request_(request) {
    if (request.method == "M-POST") {
        prefix_ = extension_prefix(request);
    } else if (request.method != "POST") {
        throw HttpError(METHOD_NOT_ALLOWED, "", "only POST and M-POST are served");
    }
    const std::string* contentType = request.header("Content-Type");
    if (contentType == nullptr || !is_xml_in_utf8(*contentType)) {
        throw HttpError(UNSUPPORTED_MEDIA_TYPE, "",
                        "the content must be application/xml or text/xml in UTF-8");
    }
    const std::string* encoding = request.header("Content-Encoding");
    if (encoding != nullptr && !same_name(trimmed(*encoding), "identity")) {
        throw HttpError(UNSUPPORTED_MEDIA_TYPE, "", "content encodings are not supported");
    }
    const std::string* operation = header("CIMOperation");
    if (operation == nullptr && header("CIMExport") != nullptr) {
        throw HttpError(NOT_IMPLEMENTED, "unsupported-operation", "indications are exported to listeners");
    }
    if (operation == nullptr) throw HttpError(BAD_REQUEST, "header-mismatch", "no CIMOperation header");
    if (!same_name(trimmed(*operation), "MethodCall")) {
        throw HttpError(BAD_REQUEST, "unsupported-operation", "CIMOperation must be MethodCall");
    }
    if (header("CIMBatch") != nullptr) {
        throw HttpError(NOT_IMPLEMENTED, "multiple-requests-unsupported", "one operation a request, please");
    }
    const std::string* version = header("CIMProtocolVersion");
    if (version != nullptr && !trimmed(*version).starts_with("1.")) {
        throw HttpError(NOT_IMPLEMENTED, "unsupported-protocol-version", "version " + *version);
    }
}

void CimHeaders::expect_to_match(const CimXmlRequest& message) const {
    constexpr auto MISMATCH = "header-mismatch";
    const std::string* method = header("CIMMethod");
    if (method == nullptr || !same_name(trimmed(unescaped(*method)), message.method)) {
        throw HttpError(BAD_REQUEST, MISMATCH, "CIMMethod does not name the operation");
    }
    const std::string* object = header("CIMObject");
    if (object == nullptr) throw HttpError(BAD_REQUEST, MISMATCH, "no CIMObject header");
    if (!message.extrinsic && !same_name(trimmed(unescaped(*object)), message.nameSpace)) {
        throw HttpError(BAD_REQUEST, MISMATCH, "CIMObject does not name the namespace");
    }
}

HttpReply CimHeaders::reply(std::string body) const {
    HttpReply result{200, {{"Content-Type", std::string(CONTENT_TYPE)}}, std::move(body)};
    result.headers.emplace_back(prefix_ + "CIMOperation", "MethodResponse");
    if (!prefix_.empty()) {
        result.headers.emplace_back("Ext", "");
        result.headers.emplace_back("Cache-Control", "no-cache");
        result.headers.emplace_back("Man",
                                    std::string(EXTENSION) + "; ns=" + prefix_.substr(0, prefix_.size() - 1));
    }
    return result;
}

HttpReply error_reply(const HttpError& error) {
    HttpReply reply = text_reply(error.status, error.what());
    if (!error.cimError.empty()) reply.headers.emplace_back("CIMError", error.cimError);
    if (error.status == METHOD_NOT_ALLOWED) reply.headers.emplace_back("Allow", "POST, M-POST");
    return reply;
}

} // namespace cimserver
