// The association classes that a provider knows, and the classes that can be their source.
//
// A CMPI provider may insist on the association class of a traversal, but browsers ask without one. The
// server then asks once for each class that this table allows for the source. The sources are part of the
// table because a provider may answer a class that it does not know with something else than nothing.
#ifndef KESTO_SERVER_PROVIDER_ASSOCIATION_TABLE_H
#define KESTO_SERVER_PROVIDER_ASSOCIATION_TABLE_H

#include <istream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "server/model/error.h"

namespace cimserver {

class AssociationTableError : public Error {
  public:
    using Error::Error;
};

class AssociationTable {
  public:
    struct Row {
        std::string association;
        std::vector<std::string> sources; // none listed: any class
    };

    AssociationTable() = default;
    explicit AssociationTable(std::vector<Row> rows) : rows_(std::move(rows)) {}

    // One association class a line: "Association: Source Source ...", or just "Association" for any source.
    // Blank lines and lines that start with # do not count. Throws AssociationTableError.
    static AssociationTable read(std::istream& text, const std::string& fileName);

    // The same from a file. Throws AssociationTableError for one that cannot be read, too.
    static AssociationTable read_file(const std::string& fileName);

    bool empty() const { return rows_.empty(); }

    // The association classes to ask for when a traversal from this class names none, in the table's order.
    std::vector<std::string> from(std::string_view sourceClass) const;

  private:
    std::vector<Row> rows_;
};

} // namespace cimserver

#endif
