#pragma once
#include <string>
#include <vector>

#include "simhost/script/token.h"

namespace simhost::script {

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
    /// The bare text of a Word, Name or Path token, without its mark and quotes.
    [[nodiscard]] std::wstring WordValue(const Token& token) const;

  private:
    void ReadAll();
    void ReadToken();
    void Add(Tok kind, size_t end);
    void AddBad(size_t end, const wchar_t* complaint);
    void StartLine(size_t at);

    bool SkipBlanks();
    bool SkipBlockComment();
    bool JoinLines();

    void ReadNumber();
    void ReadWord(Tok kind, size_t from);
    void ReadString();
    void ReadVerbatim();
    void ReadPath();
    void ReadOperator();
    void MatchBrackets();

    [[nodiscard]] wchar_t At(size_t index) const { return index < text_.size() ? text_[index] : 0; }
    [[nodiscard]] size_t EndOfWord(size_t from) const;
    [[nodiscard]] size_t EndOfLine(size_t from) const;

    std::wstring text_;
    std::vector<Token> tokens_;
    std::vector<std::pair<uint32_t, const wchar_t*>> complaints_; // by offset, ascending
    size_t at_ = 0;
    size_t lineStart_ = 0;
    uint32_t line_ = 1;
    bool blankBefore_ = true;
};

} // namespace simhost::script
