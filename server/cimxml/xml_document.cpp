#include "server/cimxml/xml_document.h"

#include <expat.h>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <memory>
#include <new>
#include <type_traits>

namespace cimserver {

namespace {

// Builds the tree from the parser's events. The elements whose end has not come yet lie on a stack.
class TreeBuilder {
  public:
    TreeBuilder() : parser_(XML_ParserCreate("UTF-8"), &XML_ParserFree) {
        if (!parser_) throw std::bad_alloc();
        XML_SetUserData(parser_.get(), this);
        XML_SetStartElementHandler(parser_.get(), [](void* self, const char* name, const char** attributes) {
            guarded(self, [&](TreeBuilder& builder) { builder.start(name, attributes); });
        });
        XML_SetEndElementHandler(parser_.get(), [](void* self, const char*) {
            guarded(self, [](TreeBuilder& builder) { builder.end(); });
        });
        XML_SetCharacterDataHandler(parser_.get(), [](void* self, const char* text, int length) {
            guarded(self, [&](TreeBuilder& builder) {
                builder.open_.back().text.append(text, static_cast<std::size_t>(length));
            });
        });
        XML_SetStartDoctypeDeclHandler(
            parser_.get(), [](void* self, const char*, const char*, const char*, int) {
                guarded(self, [](TreeBuilder&) { throw XmlError("a document type"); });
            });
    }

    XmlElement parse(std::string_view document) {
        const auto parsed =
            XML_Parse(parser_.get(), document.data(), static_cast<int>(document.size()), XML_TRUE);
        if (refusal_) std::rethrow_exception(refusal_);
        if (parsed != XML_STATUS_OK) throw XmlError(XML_ErrorString(XML_GetErrorCode(parser_.get())));
        return std::move(root_);
    }

  private:
    // An exception must not travel through the C library that calls this: it waits until the parser has
    // returned.
    template <typename Event>
    static void guarded(void* self, Event event) {
        TreeBuilder& builder = *static_cast<TreeBuilder*>(self);
        if (builder.refusal_) return; // the parser may still report what it has read already
        try {
            event(builder);
        } catch (...) {
            builder.refusal_ = std::current_exception();
            XML_StopParser(builder.parser_.get(), XML_FALSE);
        }
    }

    void start(const char* name, const char** attributes) {
        if (open_.size() == DEEPEST_NESTING) throw XmlError("elements nested too deeply");
        XmlElement element;
        element.name = name;
        for (; *attributes != nullptr; attributes += 2) {
            if (element.attributes.size() == MOST_ATTRIBUTES) throw XmlError("too many attributes");
            element.attributes.emplace_back(attributes[0], attributes[1]);
        }
        open_.push_back(std::move(element));
    }

    void end() {
        XmlElement element = std::move(open_.back());
        open_.pop_back();
        if (open_.empty()) {
            root_ = std::move(element);
        } else {
            open_.back().children.push_back(std::move(element));
        }
    }

    std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser_;
    std::vector<XmlElement> open_;
    XmlElement root_;
    std::exception_ptr refusal_;
};

} // namespace

const std::string* XmlElement::attribute(std::string_view attributeName) const {
    const auto found = std::find_if(attributes.begin(), attributes.end(), [attributeName](const auto& each) {
        return each.first == attributeName;
    });
    return found != attributes.end() ? &found->second : nullptr;
}

XmlElement parse_xml(std::string_view document) {
    if (document.size() > LARGEST_DOCUMENT) throw XmlError("a document that is too large");
    // expat would take UTF-16 as well, in which every document has zero bytes. No document in UTF-8 has.
    if (document.find('\0') != std::string_view::npos) throw XmlError("not in UTF-8");
    return TreeBuilder().parse(document);
}

} // namespace cimserver
