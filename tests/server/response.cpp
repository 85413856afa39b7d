#include "tests/server/response.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace {

using cimserver::XmlElement;

using Elements = std::vector<const XmlElement*>;

// One step of a path: "/NAME[@ATTRIBUTE='value']" and the like.
struct Step {
    bool deep = false; // descendants, not children only
    bool isAttribute = false;
    std::string name{}; // * for any
    std::vector<std::pair<std::string, std::string>> conditions{};
};

Step take_step(std::string_view& path) {
    Step step;
    step.deep = path.starts_with("//");
    path.remove_prefix(step.deep ? 2 : 1);
    step.isAttribute = path.starts_with('@');
    if (step.isAttribute) path.remove_prefix(1);
    step.name = path.substr(0, path.find_first_of("/["));
    path.remove_prefix(step.name.size());
    while (path.starts_with("[@")) {
        const std::size_t equals = path.find("='");
        const std::size_t end = path.find("']");
        step.conditions.emplace_back(path.substr(2, equals - 2), path.substr(equals + 2, end - equals - 2));
        path.remove_prefix(end + 2);
    }
    return step;
}

bool fits(const XmlElement& element, const Step& step) {
    return (step.name == "*" || element.name == step.name) &&
           std::all_of(step.conditions.begin(), step.conditions.end(), [&element](const auto& condition) {
               const std::string* value = element.attribute(condition.first);
               return value != nullptr && *value == condition.second;
           });
}

void add_children(const XmlElement& parent, const Step& step, Elements& found) {
    for (const XmlElement& child : parent.children) {
        const bool isNew = std::find(found.begin(), found.end(), &child) == found.end();
        if (isNew && fits(child, step)) found.push_back(&child);
        if (step.deep) add_children(child, step, found);
    }
}

void add_attributes(const XmlElement& element, const Step& step, std::vector<std::string>& found) {
    if (const std::string* value = element.attribute(step.name)) found.push_back(*value);
    if (!step.deep) return;
    for (const XmlElement& child : element.children) {
        add_attributes(child, step, found);
    }
}

} // namespace

Response::Response(const std::string& body) {
    try {
        document_.children.push_back(cimserver::parse_xml(body));
    } catch (const cimserver::XmlError&) {
        wellFormed_ = false;
    }
}

std::vector<std::string> Response::texts(const std::string& path) const {
    Elements elements = {&document_};
    std::vector<std::string> result;
    for (std::string_view rest = path; !rest.empty();) {
        const Step step = take_step(rest);
        Elements found;
        for (const XmlElement* element : elements) {
            if (step.isAttribute) {
                add_attributes(*element, step, result);
            } else {
                add_children(*element, step, found);
            }
        }
        elements = std::move(found);
    }
    for (const XmlElement* element : elements) {
        result.push_back(element->text);
    }
    return result;
}

std::string Response::text(const std::string& path) const {
    const std::vector<std::string> all = texts(path);
    return all.empty() ? "(no " + path + ")" : all.front();
}

std::string Response::property(const std::string& name, std::size_t instance) const {
    Elements instances;
    add_children(document_, {.deep = true, .name = "INSTANCE"}, instances);
    if (instance >= instances.size()) return "(no instance)";
    for (const XmlElement& property : instances[instance]->children) {
        const std::string* itsName = property.attribute("NAME");
        const bool isMeant = property.name == "PROPERTY" && itsName != nullptr && *itsName == name;
        if (isMeant && !property.children.empty()) return property.children.front().text;
    }
    return "(no " + name + ")";
}

int Response::error_code() const {
    return count("//ERROR") != 0 ? std::atoi(text("//ERROR/@CODE").c_str()) : 0;
}
