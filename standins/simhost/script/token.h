#pragma once
#include <cstdint>
#include <string_view>

namespace simhost::script {

enum class Tok : uint8_t {
    End,      // of the text
    Line,     // a line break or ";"
    Bad,      // no token: the lexer knows why
    Number,   // 12  1.5e3  0xff  7L  9P  .5d0
    Time,     // 10f  2s  160t  1m30s  0:1.0
    String,   // "..."
    Verbatim, // @"..."
    Name,     // #abc  #'a b'
    Word,     // identifiers and keywords; 'a b'
    Path,     // $box*
    Resource, // ~TEXT~
    LParen,
    RParen,
    LBracket,
    RBracket,
    HashParen,
    HashBrace,
    RBrace,
    Comma,
    Colon,
    DoubleColon,
    Dot,
    DotDot,
    Assign,
    PlusAssign,
    MinusAssign,
    StarAssign,
    SlashAssign,
    Plus,
    Minus,
    Star,
    Slash,
    Caret,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
    Ampersand,
    Question,
};

/// Reserved words. `None` also for quoted words, and after ".", "#" and before ":" a reserved
/// word is a plain one: the parser decides.
enum class Key : uint8_t {
    None,
    About,
    And,
    Animate,
    As,
    At,
    Attributes,
    By,
    Case,
    Catch,
    Collect,
    Continue,
    Coordsys,
    Do,
    Else,
    Exit,
    Fn,
    For,
    Global,
    If,
    In,
    Local,
    MacroScript,
    Mapped,
    Max,
    Not,
    Of,
    Off,
    On,
    Or,
    Parameters,
    Persistent,
    Plugin,
    RcMenu,
    Return,
    Rollout,
    Set,
    Struct,
    Then,
    Throw,
    To,
    Tool,
    Try,
    Undo,
    Utility,
    When,
    Where,
    While,
    With,
};

struct Token {
    Tok kind = Tok::End;
    Key key = Key::None;
    bool blankBefore = false; // also at the start of a line
    bool blankAfter = false;  // also at the end of a line
    bool quoted = false;      // a word written 'so'
    bool hasComma = false;    // LBracket: a comma stands between it and its partner
    uint32_t offset = 0;      // in the text
    uint32_t length = 0;
    uint32_t line = 1;
    uint32_t column = 1;
    uint32_t partner = 0; // opening brackets: index of the closing one; 0 when there is none
};

/// The reserved word of that spelling (any case), else Key::None.
[[nodiscard]] Key FindKeyword(std::wstring_view word);
/// Whether scripts also use the word as a name: it is reserved only where what it begins follows.
[[nodiscard]] bool IsSoftKeyword(Key key);

} // namespace simhost::script
