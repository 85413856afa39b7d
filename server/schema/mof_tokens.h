// MOF text as a series of tokens, without comments.
#ifndef KESTO_SERVER_SCHEMA_MOF_TOKENS_H
#define KESTO_SERVER_SCHEMA_MOF_TOKENS_H

#include <cstddef>
#include <string>
#include <string_view>

#include "server/model/error.h"

namespace cimserver {

// "file:line: what is wrong", also for what the declarations mean, not only for how they are written.
class MofError : public Error {
  public:
    using Error::Error;
};

struct MofToken {
    enum class Kind { Name, Number, Text, Character, Sign, End };
    Kind kind = Kind::End;
    std::string text; // of texts and characters, their content without quotes and escapes
    unsigned line = 0;
};

class MofTokens {
  public:
    // The text must outlive the object. Throws MofError from here on for what is no token.
    MofTokens(std::string_view text, std::string file);

    const MofToken& current() const { return current_; }
    MofToken take(); // the current token; the next becomes current
    const std::string& file() const { return file_; }

    bool is(std::string_view nameOrSign) const;
    bool take_if(std::string_view nameOrSign);
    void expect(std::string_view nameOrSign);
    std::string expect_name(std::string_view whatOf);

    [[noreturn]] void refuse(const std::string& why) const;

  private:
    void skip_blanks_and_comments();
    MofToken read();
    MofToken read_quoted();
    void read_escape(std::string& out);
    bool at_end() const { return at_ >= text_.size(); }
    char peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }

    std::string_view text_;
    std::string file_;
    std::size_t at_ = 0;
    unsigned line_ = 1;
    MofToken current_;
};

} // namespace cimserver

#endif
