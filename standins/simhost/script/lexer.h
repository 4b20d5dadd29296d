#pragma once
#include <string>
#include <vector>

#include "simhost/script/error.h"
#include "simhost/script/token.h"

namespace simhost::script {

/// Longest text that is taken as a script, in UTF-16 units.
inline constexpr size_t maxScriptLength = size_t{8} << 20;

/// A script cut into tokens. The list ends with Tok::End. Something that is no token becomes a
/// Tok::Bad, so that what stands before it can still be compiled and run.
class TokenList {
  public:
    explicit TokenList(std::wstring text);

    [[nodiscard]] const std::vector<Token>& Tokens() const { return tokens_; }
    [[nodiscard]] std::wstring_view Text(const Token& token) const {
        return std::wstring_view(text_).substr(token.offset, token.length);
    }
    /// Why a Tok::Bad is none.
    [[nodiscard]] const wchar_t* Complaint(const Token& token) const;

    /// The contents of a String or Verbatim token, escapes resolved.
    [[nodiscard]] std::wstring StringValue(const Token& token) const;
    /// The bare text of a Word or Name token, without "#" and quotes.
    [[nodiscard]] std::wstring WordValue(const Token& token) const;

  private:
    void Read();
    void Add(Tok kind, size_t start, size_t end);
    void Bad(size_t start, size_t end, const wchar_t* complaint);
    void NewLine(size_t next);

    bool SkipBlanks();
    void SkipLineComment();
    bool SkipBlockComment();
    bool JoinLines();

    void ReadNumber();
    void ReadWord();
    void ReadQuotedWord();
    void ReadString();
    void ReadVerbatim();
    void ReadHash();
    void ReadPath();
    void ReadResource();
    void ReadOperator();
    void MatchBrackets();

    [[nodiscard]] wchar_t At(size_t index) const { return index < text_.size() ? text_[index] : 0; }
    [[nodiscard]] size_t EndOfWord(size_t from) const;

    std::wstring text_;
    std::vector<Token> tokens_;
    std::vector<std::pair<uint32_t, const wchar_t*>> complaints_; // by offset, ascending
    size_t at_ = 0;
    size_t lineStart_ = 0;
    uint32_t line_ = 1;
    bool blankBefore_ = true;
};

/// End of the number or time that starts at `from`; `from` itself when none does.
struct NumberSpan {
    size_t end = 0;
    bool isTime = false;
    bool wellFormed = true;
};
[[nodiscard]] NumberSpan ScanNumber(std::wstring_view text, size_t from);

} // namespace simhost::script
