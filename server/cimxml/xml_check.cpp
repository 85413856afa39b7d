#include "server/cimxml/xml_check.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "server/model/text.h"

namespace cimserver {

namespace {

class IllFormed {
  public:
    std::string what;
};

class Scanner {
  public:
    explicit Scanner(std::string_view document) : rest_(document) {}

    void run() {
        constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
        if (rest_.starts_with(BYTE_ORDER_MARK)) rest_.remove_prefix(BYTE_ORDER_MARK.size());
        if (!is_xml_text(rest_)) throw IllFormed{"a character that XML does not have, or no UTF-8"};
        while (!rest_.empty()) {
            text(take_until("<", false));
            if (!rest_.empty()) markup();
        }
        if (depth_ != 0 || roots_ != 1) throw IllFormed{"not exactly one document element"};
    }

  private:
    // Takes what stands before the mark; the mark itself stays when it only may come.
    std::string_view take_until(std::string_view mark, bool mustCome = true) {
        const std::size_t at = rest_.find(mark);
        if (at == std::string_view::npos && mustCome) throw IllFormed{"markup without an end"};
        const std::string_view taken = rest_.substr(0, at);
        rest_.remove_prefix(taken.size());
        if (mustCome) rest_.remove_prefix(mark.size());
        return taken;
    }

    bool take(std::string_view start) {
        if (!rest_.starts_with(start)) return false;
        rest_.remove_prefix(start.size());
        return true;
    }

    void text(std::string_view characters) {
        if (depth_ == 0 && !trimmed(characters).empty()) throw IllFormed{"text outside the document element"};
        entities(characters);
    }

    void markup() {
        if (take("<!--")) {
            take_until("-->");
        } else if (take("<![CDATA[")) {
            if (depth_ == 0) throw IllFormed{"text outside the document element"};
            take_until("]]>");
        } else if (take("<?")) {
            take_until("?>");
        } else if (take("<!DOCTYPE")) {
            if (depth_ != 0 || roots_ != 0) throw IllFormed{"a misplaced document type"};
            if (take_until(">").find('[') != std::string_view::npos)
                throw IllFormed{"declarations of its own"};
        } else if (take("</")) {
            take_until(">");
            if (depth_ == 0) throw IllFormed{"an end tag without a start tag"};
            --depth_;
        } else {
            take("<");
            start_tag();
        }
    }

    void start_tag() {
        if (depth_ == 0 && roots_++ != 0) throw IllFormed{"a second document element"};
        if (++depth_ > DEEPEST_NESTING) throw IllFormed{"elements nested too deeply"};
        std::vector<std::string_view> attributes;
        for (;;) {
            const std::size_t at = rest_.find_first_of("\"'<>");
            if (at == std::string_view::npos || rest_[at] == '<') throw IllFormed{"a tag without an end"};
            const std::string_view before = trimmed(rest_.substr(0, at));
            const char mark = rest_[at];
            rest_.remove_prefix(at + 1);
            if (mark == '>') {
                if (before.ends_with('/')) --depth_;
                return;
            }
            attribute(before, attributes);
            const std::string_view value = take_until(std::string_view(&mark, 1));
            if (value.find('<') != std::string_view::npos) throw IllFormed{"< in an attribute"};
            entities(value);
        }
    }

    // `before` ends with the attribute's name and an equals sign.
    static void attribute(std::string_view before, std::vector<std::string_view>& known) {
        if (!before.ends_with('=')) throw IllFormed{"an attribute without a name"};
        before = trimmed(before.substr(0, before.size() - 1));
        const std::size_t blank = before.find_last_of(" \t\r\n");
        const std::string_view name = before.substr(blank == std::string_view::npos ? 0 : blank + 1);
        if (std::find(known.begin(), known.end(), name) != known.end())
            throw IllFormed{"a repeated attribute"};
        known.push_back(name);
    }

    static void entities(std::string_view characters) {
        for (std::size_t at = characters.find('&'); at != std::string_view::npos;
             at = characters.find('&', at)) {
            const std::size_t end = characters.find(';', at);
            if (end == std::string_view::npos || !is_entity(characters.substr(at + 1, end - at - 1))) {
                throw IllFormed{"an undefined entity"};
            }
            at = end;
        }
    }

    static bool is_entity(std::string_view name) {
        constexpr std::array<std::string_view, 5> PREDEFINED = {"amp", "lt", "gt", "quot", "apos"};
        if (!name.starts_with('#')) {
            return std::find(PREDEFINED.begin(), PREDEFINED.end(), name) != PREDEFINED.end();
        }
        name.remove_prefix(1);
        const int base = name.starts_with('x') ? 16 : 10;
        if (base == 16) name.remove_prefix(1);
        std::uint32_t code = 0;
        const auto read = std::from_chars(name.data(), name.data() + name.size(), code, base);
        return read.ec == std::errc() && read.ptr == name.data() + name.size() && is_xml_char(code);
    }

    std::string_view rest_;
    unsigned depth_ = 0;
    unsigned roots_ = 0;
};

} // namespace

std::optional<std::string> find_ill_formed(std::string_view document) {
    try {
        Scanner(document).run();
        return std::nullopt;
    } catch (const IllFormed& illFormed) {
        return illFormed.what;
    }
}

} // namespace cimserver
