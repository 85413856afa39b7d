#include "server/cimxml_http.h"

#include <algorithm>

#include "server/text.h"

namespace cimserver {

namespace {

constexpr std::string_view kExtension = "http://www.dmtf.org/cim/mapping/http/v1.0";
constexpr std::string_view kContentType = "application/xml; charset=\"utf-8\"";

constexpr unsigned kBadRequest = 400;
constexpr unsigned kMethodNotAllowed = 405;
constexpr unsigned kUnsupportedMediaType = 415;
constexpr unsigned kNotImplemented = 501;
constexpr unsigned kNotExtended = 510;

std::string_view withoutQuotes(std::string_view text) {
    text = trimmed(text);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') return text.substr(1, text.size() - 2);
    return text;
}

// The value of a parameter in a header like "text/xml; charset=utf-8"; empty when it has none.
std::string_view headerParameter(std::string_view header, std::string_view name) {
    for (std::size_t at = header.find(';'); at != std::string_view::npos;) {
        const std::size_t next = header.find(';', at + 1);
        const std::string_view parameter =
            header.substr(at + 1, next == std::string_view::npos ? next : next - at - 1);
        const std::size_t equals = parameter.find('=');
        if (equals != std::string_view::npos && sameName(trimmed(parameter.substr(0, equals)), name)) {
            return withoutQuotes(parameter.substr(equals + 1));
        }
        at = next;
    }
    return {};
}

bool isXmlInUtf8(std::string_view contentType) {
    const std::string_view type = trimmed(contentType.substr(0, contentType.find(';')));
    const std::string_view charset = headerParameter(contentType, "charset");
    return (sameName(type, "application/xml") || sameName(type, "text/xml")) &&
           (charset.empty() || sameName(charset, "utf-8") || sameName(charset, "utf8") ||
            sameName(charset, "us-ascii"));
}

// Undoes %-escapes; a % without two digits stays what it is, and then matches nothing.
std::string unescaped(std::string_view text) {
    const auto digit = [](char c) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        return kDigits.find(static_cast<char>(c >= 'A' && c <= 'F' ? c - 'A' + 'a' : c));
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
std::string extensionPrefix(const HttpRequest& request) {
    const std::string* man = request.header("Man");
    const std::string_view declared =
        man ? withoutQuotes(std::string_view(*man).substr(0, man->find(';'))) : "";
    const std::string_view number = man ? headerParameter(*man, "ns") : "";
    const bool digits = !number.empty() && std::all_of(number.begin(), number.end(),
                                                       [](char c) { return c >= '0' && c <= '9'; });
    if (declared != kExtension || !digits) {
        throw HttpError{kNotExtended, "",
                        "M-POST needs the header Man: " + std::string(kExtension) + "; ns=NN"};
    }
    return std::string(number) + "-";
}

} // namespace

CimHeaders::CimHeaders(const HttpRequest& request) : request_(request) {
    if (request.method == "M-POST") {
        prefix_ = extensionPrefix(request);
    } else if (request.method != "POST") {
        throw HttpError{kMethodNotAllowed, "", "only POST and M-POST are served"};
    }
    const std::string* contentType = request.header("Content-Type");
    if (!contentType || !isXmlInUtf8(*contentType)) {
        throw HttpError{kUnsupportedMediaType, "",
                        "the content must be application/xml or text/xml in UTF-8"};
    }
    const std::string* encoding = request.header("Content-Encoding");
    if (encoding && !sameName(trimmed(*encoding), "identity")) {
        throw HttpError{kUnsupportedMediaType, "", "content encodings are not supported"};
    }
    const std::string* operation = header("CIMOperation");
    if (!operation) throw HttpError{kBadRequest, "header-mismatch", "no CIMOperation header"};
    if (!sameName(trimmed(*operation), "MethodCall")) {
        throw HttpError{kBadRequest, "unsupported-operation", "CIMOperation must be MethodCall"};
    }
    if (header("CIMBatch")) {
        throw HttpError{kNotImplemented, "multiple-requests-unsupported", "one operation a request, please"};
    }
    const std::string* version = header("CIMProtocolVersion");
    if (version && !trimmed(*version).starts_with("1.")) {
        throw HttpError{kNotImplemented, "unsupported-protocol-version", "version " + *version};
    }
}

void CimHeaders::expectToMatch(const CimXmlRequest& message) const {
    constexpr auto kMismatch = "header-mismatch";
    const std::string* method = header("CIMMethod");
    if (!method || !sameName(trimmed(unescaped(*method)), message.method)) {
        throw HttpError{kBadRequest, kMismatch, "CIMMethod does not name the operation"};
    }
    const std::string* object = header("CIMObject");
    if (!object) throw HttpError{kBadRequest, kMismatch, "no CIMObject header"};
    if (!message.extrinsic && !sameName(trimmed(unescaped(*object)), message.nameSpace)) {
        throw HttpError{kBadRequest, kMismatch, "CIMObject does not name the namespace"};
    }
}

HttpReply CimHeaders::reply(std::string body) const {
    HttpReply result{200, {{"Content-Type", std::string(kContentType)}}, std::move(body)};
    result.headers.emplace_back(prefix_ + "CIMOperation", "MethodResponse");
    if (!prefix_.empty()) {
        result.headers.emplace_back("Ext", "");
        result.headers.emplace_back("Cache-Control", "no-cache");
        result.headers.emplace_back(
            "Man", std::string(kExtension) + "; ns=" + prefix_.substr(0, prefix_.size() - 1));
    }
    return result;
}

HttpReply errorReply(const HttpError& error) {
    HttpReply reply{error.status, {{"Content-Type", "text/plain; charset=utf-8"}}, error.detail + "\n"};
    if (!error.cimError.empty()) reply.headers.emplace_back("CIMError", error.cimError);
    if (error.status == kMethodNotAllowed) reply.headers.emplace_back("Allow", "POST, M-POST");
    return reply;
}

} // namespace cimserver
