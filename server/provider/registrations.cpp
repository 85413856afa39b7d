#include "server/provider/registrations.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

#include "server/model/text.h"

namespace cimserver {

namespace {

std::vector<std::string> words_of(std::string_view text) {
    std::istringstream stream{std::string(text)};
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

class Reader {
  public:
    explicit Reader(const std::string& fileName) : fileName_(fileName) {}

    void line(std::string_view content) {
        ++number_;
        content = trimmed(content);
        if (content.empty() || content.starts_with('#')) return;
        if (content.starts_with('[') && content.ends_with(']')) {
            finish_section();
            sectionLine_ = number_;
            registrations.emplace_back().className = content.substr(1, content.size() - 2);
            return;
        }
        const std::size_t colon = content.find(':');
        if (registrations.empty() || colon == std::string_view::npos) {
            refuse(number_, "expected \"[Class]\" or \"name: value\"");
        }
        entry(lower_cased(trimmed(content.substr(0, colon))), words_of(content.substr(colon + 1)));
    }

    void finish_section() const {
        if (registrations.empty()) return;
        const Registration& last = registrations.back();
        const bool typed = last.instances || last.associations;
        if (last.className.empty() || last.provider.empty() || last.nameSpaces.empty() || !typed) {
            refuse(sectionLine_, "[" + last.className + "] needs a provider, a type and a namespace");
        }
    }

    std::vector<Registration> registrations;

  private:
    void entry(const std::string& name, const std::vector<std::string>& words) {
        Registration& current = registrations.back();
        if (name == "provider" && words.size() == 1) {
            current.provider = words.front();
        } else if (name == "namespace") {
            current.nameSpaces = words;
        } else if (name == "type") {
            for (const std::string& type : words) {
                current.instances = current.instances || same_name(type, "instance");
                current.associations = current.associations || same_name(type, "association");
            }
        } else if (name != "location" && name != "parameters" && name != "unload" && name != "user") {
            refuse(number_, "unknown entry \"" + name + "\"");
        }
    }

    [[noreturn]] void refuse(unsigned line, const std::string& why) const {
        throw RegistrationError(fileName_ + ":" + std::to_string(line) + ": " + why);
    }

    const std::string& fileName_;
    unsigned number_ = 0;
    unsigned sectionLine_ = 0;
};

} // namespace

std::vector<Registration> read_registrations(std::istream& text, const std::string& fileName) {
    Reader reader(fileName);
    for (std::string line; std::getline(text, line);) {
        reader.line(line);
    }
    reader.finish_section();
    return std::move(reader.registrations);
}

std::vector<Registration> read_registration_file(const std::string& fileName) {
    if (std::filesystem::is_directory(fileName)) {
        throw RegistrationError(fileName + " is a directory, no registration of a provider");
    }
    std::ifstream file(fileName);
    const int reason = errno;
    if (!file) throw RegistrationError("cannot read " + fileName + ": " + std::strerror(reason));
    return read_registrations(file, fileName);
}

} // namespace cimserver
