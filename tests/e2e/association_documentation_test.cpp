// docs/associations.md against the switch: its diagram and tables are what a client is answered, made anew
// here and compared. To bring the document up to date run this suite with KESTO_UPDATE_DOCUMENTS=1.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <sstream>

#include "tests/e2e/cimxml_client.h"
#include "tests/e2e/traversal.h"

namespace e2e {
namespace {

const std::string DOCUMENT = PROJECT_FOLDER "/docs/associations.md";
const std::string BEGIN = "<!-- made by tests/e2e: begin -->\n";
const std::string END = "<!-- made by tests/e2e: end -->\n";

std::string file_text(const std::string& name) {
    std::ifstream file(name);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// The classes of the registration that have a kind of request, and lack another.
Names registered(const std::string& kind, const std::string& butNot = "") {
    Names names;
    std::istringstream lines(file_text(PROJECT_FOLDER "/packaging/classes.txt"));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string name;
        words >> name;
        const std::set<std::string> kinds{std::istream_iterator<std::string>(words), {}};
        if (name.starts_with("#") || !kinds.contains(kind) || kinds.contains(butNot)) continue;
        names.push_back(name);
    }
    return names;
}

Names source_classes() {
    Names names = registered("instance", "association");
    std::erase(names, "KESTO_RemoteIPPort"); // has no objects
    names.insert(names.end(), {"KESTO_EthernetPort", "KESTO_LogicalComputerSystem"});
    return names;
}

// One spelling for each class, whatever the place that its objects came from.
std::string usual_spelling(const std::string& className) {
    static const std::map<std::string, std::string> SPELLINGS = [] {
        std::map<std::string, std::string> byLowerCase;
        for (const Names& names : {registered("instance"), registered("association"), source_classes()}) {
            for (const std::string& name : names) {
                byLowerCase[lower_case(name)] = name;
            }
        }
        return byLowerCase;
    }();
    const auto found = SPELLINGS.find(lower_case(className));
    return found == SPELLINGS.end() ? className : found->second;
}

std::string joined(const Names& names, const std::string& separator) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : separator) + name;
    }
    return text;
}

// What one object is answered about one association class.
struct Answer {
    Names associatorNames;
    Names associators;
    Names referenceNames;
    Names references;

    bool operator==(const Answer&) const = default;
    bool empty() const { return *this == Answer{}; }
};

struct Row {
    std::string source;
    std::string association;
    Answer answer;
};

class AssociationDocumentation : public Traversal {
  protected:
    void SetUp() override {
        Traversal::SetUp();
        if (!HasFatalFailure()) connection_ = std::make_unique<CimXmlClient>(url());
    }

    Answer ask(const CimPath& object, const std::string& association) const {
        const auto classes = [&](const char* operation, const char* filter) {
            return connection_->classes_answered(operation, object, filter, association);
        };
        Answer answer = {classes("AssociatorNames", "AssocClass"), classes("Associators", "AssocClass"),
                         classes("ReferenceNames", "ResultClass"), classes("References", "ResultClass")};
        for (Names* names :
             {&answer.associatorNames, &answer.associators, &answer.referenceNames, &answer.references}) {
            std::transform(names->begin(), names->end(), names->begin(), usual_spelling);
        }
        return answer;
    }

    std::vector<Row> rows() const {
        std::vector<Row> rows;
        for (const std::string& name : source_classes()) {
            const CimPath object = source(name);
            for (const std::string& association : registered("association")) {
                const Answer answer = ask(object, association);
                if (!answer.empty()) rows.push_back({name, association, answer});
            }
        }
        return rows;
    }

    // An arrow for every association that leads from one class to another; one with two heads when it leads
    // back as well.
    static std::string diagram(const std::vector<Row>& rows) {
        std::set<std::vector<std::string>> ways; // from, to, label
        for (const Row& row : rows) {
            if (row.association == "CIM_HostedAccessPoint") continue; // stands for those below it
            const Answer& answer = row.answer;
            std::set<std::string> far(answer.associatorNames.begin(), answer.associatorNames.end());
            far.insert(answer.associators.begin(), answer.associators.end());
            for (const std::string& to : far) {
                const auto in = [&](const Names& names) {
                    return std::count(names.begin(), names.end(), to) > 0;
                };
                const std::string only = !in(answer.associators)       ? " (names only)"
                                         : !in(answer.associatorNames) ? " (instances only)"
                                                                       : "";
                ways.insert({row.source, to, row.association + only});
            }
        }
        const auto node = [](const std::string& name) { return name.substr(name.find('_') + 1); };
        std::string text = "```mermaid\nflowchart LR\n";
        for (const std::vector<std::string>& way : ways) {
            const bool leadsBack = ways.contains({way[1], way[0], way[2]});
            if (leadsBack && way[1] < way[0]) continue; // drawn from its other end
            text += "    " + node(way[0]) + (leadsBack ? " <-->" : " -->") + "|\"" + node(way[2]) + "\"| " +
                    node(way[1]) + "\n";
        }
        return text + "```\n";
    }

    static std::string traversal_table(const std::vector<Row>& rows) {
        std::string text =
            "| Source class | Association class | AssociatorNames | Associators | References |\n"
            "|---|---|---|---|---|\n";
        const auto cell = [](const Names& names) { return names.empty() ? "–" : joined(names, ", "); };
        for (const Row& row : rows) {
            const Answer& answer = row.answer;
            std::string references = "–";
            if (!answer.references.empty()) references = "yes";
            if (!answer.references.empty() && answer.referenceNames.empty()) references = "without names";
            if (answer.references != Names{row.association} && !answer.references.empty()) {
                references += ", of class " + joined(answer.references, ", ");
            }
            text += "| " + row.source + " | " + row.association + " | " + cell(answer.associatorNames) +
                    " | " + cell(answer.associators) + " | " + references + " |\n";
        }
        return text;
    }

    // The two references of each association class, as the enumerations give them.
    std::string ends_table() const {
        std::string text =
            "| Association class | Instances | Names, where they differ |\n"
            "|---|---|---|\n";
        for (const std::string& association : registered("association")) {
            if (association == "CIM_HostedAccessPoint") continue;
            const std::vector<CimInstance> instances = client().enumerate(association);
            const std::vector<CimPath> names = client().enumerate_names(association);
            Names inInstances;
            Names inNames;
            if (!instances.empty()) {
                for (const auto& [role, value] : instances.front().properties) {
                    if (value.starts_with("{")) {
                        inInstances.push_back(role + ": " +
                                              usual_spelling(instances.front().reference(role).className));
                    }
                }
            }
            if (!names.empty()) {
                for (const CimKey& key : names.front().keys) {
                    if (key.reference.empty()) continue;
                    inNames.push_back(key.name + ": " + usual_spelling(key.reference.front().className));
                }
            }
            const std::string first = joined(inInstances, ", ");
            const std::string second = joined(inNames, ", ");
            text += "| " + association + " | " + (first.empty() ? "none" : first) + " | " +
                    (first == second ? "" : second) + " |\n";
        }
        return text;
    }

  private:
    std::unique_ptr<CimXmlClient> connection_;
};

TEST_F(AssociationDocumentation, IsWhatTheSwitchAnswers) {
    const std::vector<Row> all = rows();
    const std::string made = "## Which class leads to which\n\n" + diagram(all) +
                             "\n## What each operation answers\n\n" + traversal_table(all) +
                             "\n## The ends of each association class\n\n" + ends_table();
    const std::string document = file_text(DOCUMENT);
    const std::size_t begin = document.find(BEGIN);
    const std::size_t end = document.find(END);
    ASSERT_NE(begin, std::string::npos);
    ASSERT_NE(end, std::string::npos);
    const std::size_t start = begin + BEGIN.size();
    if (std::getenv("KESTO_UPDATE_DOCUMENTS") != nullptr) {
        std::ofstream(DOCUMENT) << document.substr(0, start) << made << document.substr(end);
        GTEST_SKIP() << "the document is written, not compared";
    }
    EXPECT_EQ(document.substr(start, end - start), made);
}

// Names that traversals listen to and that are no associations: a server with the classes asks for none.
const Names NO_ASSOCIATIONS = {"kesto_ethernetportstatistics", "kesto_tcpendpointstatistics"};

// The rows of the traversal tables start with the association class that they listen to.
TEST(AssociationDocumentationSources, AskForEveryAssociationClassOfTheTables) {
    Names asked = folded(registered("association"));
    asked.insert(asked.end(), NO_ASSOCIATIONS.begin(), NO_ASSOCIATIONS.end());
    for (const char* file : {"associators.cpp", "references.cpp", "association_walkers.cpp"}) {
        const std::string text = file_text(std::string(PROJECT_FOLDER "/assoc/") + file);
        const std::regex row(R"row(\n    \{(?:\.className = )?"(\w+)",)row");
        std::size_t found = 0;
        for (std::sregex_iterator match(text.begin(), text.end(), row), end; match != end; ++match, ++found) {
            const std::string name = lower_case((*match)[1].str());
            EXPECT_NE(std::find(asked.begin(), asked.end(), name), asked.end()) << name << " in " << file;
        }
        EXPECT_GT(found, 10U) << "the tables of " << file << " are not where they were";
    }
}

} // namespace
} // namespace e2e
