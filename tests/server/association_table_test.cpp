#include "server/provider/association_table.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

using cimserver::AssociationTable;
using cimserver::AssociationTableError;

AssociationTable read(const std::string& text) {
    std::istringstream stream(text);
    return AssociationTable::read(stream, "table");
}

TEST(AssociationTable, HasTheAssociationsOfASource) {
    const AssociationTable table =
        read("# comment\n\nA_First: A_Thing A_Other\n  A_Second :A_Other\nA_Any\n");
    EXPECT_EQ(table.from("a_thing"), (std::vector<std::string>{"A_First", "A_Any"}));
    EXPECT_EQ(table.from("A_Other"), (std::vector<std::string>{"A_First", "A_Second", "A_Any"}));
    EXPECT_EQ(table.from("A_Else"), std::vector<std::string>{"A_Any"});
}

TEST(AssociationTable, RefusesWhatIsNoTableAndSaysWhere) {
    for (const char* wrong :
         {"A_First:", ": A_Thing", "A First", "A_First: A-Thing", "A_First: A_Thing: A_Other"}) {
        try {
            read(std::string("A_Good\n") + wrong + "\n");
            FAIL() << wrong;
        } catch (const AssociationTableError& error) {
            EXPECT_TRUE(std::string(error.what()).starts_with("table:2: ")) << error.what();
        }
    }
}

TEST(AssociationTable, RefusesAFileThatCannotBeRead) {
    const auto message = [](const std::string& file) {
        try {
            AssociationTable::read_file(file);
            return std::string("read");
        } catch (const AssociationTableError& error) {
            return std::string(error.what());
        }
    };
    EXPECT_EQ(message("/tmp"), "/tmp is a directory, no table of associations");
    EXPECT_EQ(message("/nonexistent"), "cannot read /nonexistent: No such file or directory");
}

} // namespace
