#include "tests/e2e/cim_path.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace e2e {

namespace {

[[noreturn]] void refuse(std::string_view text) {
    throw std::invalid_argument("not an object path: " + std::string(text));
}

// Where the reference that starts with the brace at `open` ends: after its closing brace.
std::size_t end_of_reference(std::string_view text, std::size_t open) {
    std::size_t depth = 0;
    bool quoted = false;
    for (std::size_t i = open; i < text.size(); ++i) {
        if (text[i] == '"') quoted = !quoted;
        if (quoted) continue;
        if (text[i] == '{') ++depth;
        if (text[i] == '}' && --depth == 0) return i + 1;
    }
    refuse(text);
}

CimKey take_key(std::string_view& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || equals + 1 > text.size()) refuse(text);
    CimKey key;
    key.name = text.substr(0, equals);
    const std::size_t start = equals + 1;
    std::size_t end;
    if (start < text.size() && text[start] == '"') {
        const std::size_t quote = text.find('"', start + 1);
        if (quote == std::string_view::npos) refuse(text);
        key.value = text.substr(start + 1, quote - start - 1);
        key.quoted = true;
        end = quote + 1;
    } else if (start < text.size() && text[start] == '{') {
        end = end_of_reference(text, start);
        key.reference.push_back(CimPath::parse(text.substr(start + 1, end - start - 2)));
    } else {
        end = std::min(text.find(',', start), text.size());
        key.value = text.substr(start, end - start);
    }
    if (end < text.size() && text[end] != ',') refuse(text);
    text.remove_prefix(std::min(end + 1, text.size()));
    return key;
}

const CimKey* find_key(const CimPath& path, std::string_view name) {
    const auto found = std::find_if(path.keys.begin(), path.keys.end(), [&](const CimKey& key) {
        return lower_case(key.name) == lower_case(name);
    });
    return found == path.keys.end() ? nullptr : &*found;
}

} // namespace

std::string lower_case(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return lower;
}

CimPath CimPath::parse(std::string_view text) {
    // The host may hold dots and a colon too: the class is what stands between the last colon and the last
    // dot in front of the first key's equals sign. wbemcli leaves the colon out in references.
    const std::string_view head = text.substr(0, text.find('='));
    const bool hasKeys = head.size() != text.size();
    const std::size_t dot = hasKeys ? head.rfind('.') : head.size();
    if (dot == std::string_view::npos) refuse(text);
    std::string_view name = head.substr(0, dot);
    if (const std::size_t colon = name.rfind(':'); colon != name.npos && name.find('/', colon) == name.npos) {
        name.remove_prefix(colon + 1);
    } else if (const std::size_t start = name.find(NAMESPACE); start != name.npos) {
        name.remove_prefix(start + NAMESPACE.size());
    }
    CimPath path;
    path.className = name;
    if (name.empty() || name.find_first_of("/.:\"{ ") != name.npos) refuse(text);
    if (hasKeys) {
        text.remove_prefix(dot + 1);
        while (!text.empty()) {
            path.keys.push_back(take_key(text));
        }
    }
    return path;
}

std::string CimPath::key(std::string_view name) const {
    const CimKey* found = find_key(*this, name);
    return found == nullptr ? std::string() : found->value;
}

const CimPath& CimPath::reference(std::string_view name) const {
    const CimKey* found = find_key(*this, name);
    if (found == nullptr || found->reference.empty()) {
        throw std::out_of_range("no reference " + std::string(name) + " in " + identity());
    }
    return found->reference.front();
}

std::vector<std::string> CimPath::key_names() const {
    std::vector<std::string> names;
    for (const CimKey& key : keys) {
        names.push_back(key.name);
    }
    return names;
}

std::string CimPath::command_line_text() const {
    // wbemcli takes every plain key after a reference for a key of that reference: plain ones go first.
    std::string plain;
    std::string references;
    for (const CimKey& key : keys) {
        if (key.reference.empty()) {
            const std::string quote = key.quoted ? "\"" : "";
            plain += (plain.empty() ? "" : ",") + key.name + "=" + quote + key.value + quote;
        } else {
            references +=
                (references.empty() ? "" : ",") + key.name + "=" + key.reference.front().command_line_text();
        }
    }
    const std::string separator = plain.empty() || references.empty() ? "" : ",";
    return className + (keys.empty() ? "" : ".") + plain + separator + references;
}

std::string CimPath::identity() const {
    std::vector<std::string> parts;
    for (const CimKey& key : keys) {
        parts.push_back(lower_case(key.name) + "=" +
                        (key.reference.empty() ? key.value : "{" + key.reference.front().identity() + "}"));
    }
    std::sort(parts.begin(), parts.end());
    std::string text = lower_case(className);
    for (const std::string& part : parts) {
        text += "," + part;
    }
    return text;
}

} // namespace e2e
