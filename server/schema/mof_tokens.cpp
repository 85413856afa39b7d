#include "server/schema/mof_tokens.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

#include "server/model/text.h"

namespace cimserver {

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

bool starts_name(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<signed char>(c) < 0;
}

bool continues_number(char c, char before) {
    const bool sign = (c == '+' || c == '-') && (before == 'e' || before == 'E');
    return is_digit(c) || starts_name(c) || c == '.' || sign;
}

} // namespace

MofTokens::MofTokens(std::string_view text, std::string file) : text_(text), file_(std::move(file)) {
    constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
    if (text_.starts_with(BYTE_ORDER_MARK)) text_.remove_prefix(BYTE_ORDER_MARK.size());
    current_ = read();
}

void MofTokens::refuse(const std::string& why) const {
    throw MofError(file_ + ":" + std::to_string(current_.line != 0 ? current_.line : line_) + ": " + why);
}

MofToken MofTokens::take() {
    MofToken taken = std::move(current_);
    current_.line = line_;
    current_ = read();
    return taken;
}

bool MofTokens::is(std::string_view nameOrSign) const {
    const bool known = current_.kind == MofToken::Kind::Name || current_.kind == MofToken::Kind::Sign;
    return known && same_name(current_.text, nameOrSign);
}

bool MofTokens::take_if(std::string_view nameOrSign) {
    const bool found = is(nameOrSign);
    if (found) take();
    return found;
}

void MofTokens::expect(std::string_view nameOrSign) {
    if (!take_if(nameOrSign)) {
        refuse("expected " + std::string(nameOrSign) + ", not " +
               (current_.kind == MofToken::Kind::End ? "the end of the file" : "\"" + current_.text + "\""));
    }
}

std::string MofTokens::expect_name(std::string_view whatOf) {
    if (current_.kind != MofToken::Kind::Name) refuse("expected the name of " + std::string(whatOf));
    return take().text;
}

void MofTokens::skip_blanks_and_comments() {
    while (!at_end()) {
        if (peek() == '/' && peek(1) == '/') {
            at_ = std::min(text_.find('\n', at_), text_.size());
        } else if (peek() == '/' && peek(1) == '*') {
            const std::size_t end = text_.find("*/", at_ + 2);
            if (end == std::string_view::npos) {
                current_.line = line_;
                refuse("a comment without end");
            }
            line_ +=
                static_cast<unsigned>(std::count(text_.begin() + static_cast<std::ptrdiff_t>(at_),
                                                 text_.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
            at_ = end + 2;
        } else if (std::string_view(" \t\r\n\f\v").find(peek()) != std::string_view::npos) {
            if (peek() == '\n') ++line_;
            ++at_;
        } else {
            return;
        }
    }
}

MofToken MofTokens::read() {
    skip_blanks_and_comments();
    if (at_end()) return {MofToken::Kind::End, {}, line_};
    const std::size_t start = at_;
    const char first = peek();
    if (first == '"' || first == '\'') return read_quoted();
    if (starts_name(first)) {
        while (starts_name(peek()) || is_digit(peek())) {
            ++at_;
        }
        return {MofToken::Kind::Name, std::string(text_.substr(start, at_ - start)), line_};
    }
    const bool sign = first == '+' || first == '-' || first == '.';
    if (is_digit(first) || (sign && (is_digit(peek(1)) || peek(1) == '.'))) {
        for (++at_; continues_number(peek(), text_[at_ - 1]);) {
            ++at_;
        }
        return {MofToken::Kind::Number, std::string(text_.substr(start, at_ - start)), line_};
    }
    ++at_;
    return {MofToken::Kind::Sign, std::string(1, first), line_};
}

MofToken MofTokens::read_quoted() {
    const unsigned line = line_;
    const char quote = text_[at_++];
    std::string content;
    while (peek() != quote) {
        if (at_end() || peek() == '\n') {
            current_.line = line;
            refuse("a text without end");
        }
        if (peek() == '\\') {
            read_escape(content);
        } else {
            content += text_[at_++];
        }
    }
    ++at_;
    return {quote == '"' ? MofToken::Kind::Text : MofToken::Kind::Character, std::move(content), line};
}

void MofTokens::read_escape(std::string& out) {
    ++at_; // the backslash
    const char escape = at_end() ? '\0' : text_[at_++];
    constexpr std::string_view LETTERS = "btnfr\"'\\";
    constexpr std::string_view MEANINGS = "\b\t\n\f\r\"'\\";
    const std::size_t known = LETTERS.find(escape);
    if (known != std::string_view::npos) {
        out += MEANINGS[known];
        return;
    }
    std::uint32_t code = 0;
    constexpr std::size_t MOST_DIGITS = 4;
    const char* digits = text_.data() + at_;
    const char* limit = digits + std::min(MOST_DIGITS, text_.size() - at_);
    const auto read = std::from_chars(digits, limit, code, 16);
    if ((escape != 'x' && escape != 'X') || read.ptr == digits) {
        current_.line = line_;
        refuse("an unknown escape in a text");
    }
    at_ += static_cast<std::size_t>(read.ptr - digits);
    append_utf8(out, code);
}

} // namespace cimserver
