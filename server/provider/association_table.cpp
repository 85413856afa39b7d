#include "server/provider/association_table.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include "server/model/cim_model.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

bool is_name(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
}

} // namespace

AssociationTable AssociationTable::read(std::istream& text, const std::string& fileName) {
    std::vector<Row> rows;
    std::string line;
    for (unsigned number = 1; std::getline(text, line); ++number) {
        const std::string_view content = trimmed(line);
        if (content.empty() || content.starts_with('#')) continue;
        const std::size_t colon = content.find(':');
        Row row{std::string(trimmed(content.substr(0, colon))), {}};
        if (colon != std::string_view::npos) {
            std::istringstream sources{std::string(content.substr(colon + 1))};
            for (std::string source; sources >> source;) {
                row.sources.push_back(source);
            }
        }
        const bool named =
            is_name(row.association) && std::all_of(row.sources.begin(), row.sources.end(), is_name);
        if (!named || (colon != std::string_view::npos && row.sources.empty())) {
            throw AssociationTableError(fileName + ":" + std::to_string(number) +
                                        ": expected \"Association: Source ...\" or \"Association\"");
        }
        rows.push_back(std::move(row));
    }
    return AssociationTable(std::move(rows));
}

AssociationTable AssociationTable::read_file(const std::string& fileName) {
    if (std::filesystem::is_directory(fileName)) {
        throw AssociationTableError(fileName + " is a directory, no table of associations");
    }
    std::ifstream file(fileName);
    const int reason = errno;
    if (!file) throw AssociationTableError("cannot read " + fileName + ": " + std::strerror(reason));
    return read(file, fileName);
}

std::vector<std::string> AssociationTable::from(std::string_view sourceClass) const {
    std::vector<std::string> associations;
    for (const Row& row : rows_) {
        if (row.sources.empty() || contains_name(row.sources, sourceClass)) {
            associations.push_back(row.association);
        }
    }
    return associations;
}

} // namespace cimserver
