#pragma once
#include <cstdint>
#include <string_view>

namespace simhost::script {

enum class Tok : uint8_t {
    End,      // of the text
    Line,     // a line break or ";"
    Bad,      // no token: the lexer knows why
    Number,   // 12  1.5e3  0xff  7L  9P
    String,   // "..."
    Verbatim, // @"..."
    Name,     // #abc  #'a b'
    Word,     // identifiers and reserved words; 'a b'
    Path,     // $box*
    LParen,
    RParen,
    LBracket,
    RBracket,
    HashParen,
    Comma,
    Colon,
    DoubleColon,
    Dot,
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
};

/// Reserved words. `None` also for quoted words, and after ".", "#" and before ":" a reserved
/// word is a plain one: the parser decides.
enum class Key : uint8_t {
    None,
    And,
    As,
    By,
    Case,
    Catch,
    Collect,
    Continue,
    Do,
    Else,
    Exit,
    Fn,
    For,
    Global,
    If,
    In,
    Local,
    Not,
    Of,
    Off,
    On,
    Or,
    Return,
    Struct,
    Then,
    To,
    Try,
    Undo,
    Where,
    While,
    With,
};

struct Token {
    Tok kind = Tok::End;
    Key key = Key::None;
    bool blankBefore = false; // also at the start of a line
    bool blankAfter = false;  // also at the end of a line
    bool hasComma = false;    // LBracket: a comma stands between it and its partner
    uint32_t offset = 0;      // in the text
    uint32_t length = 0;
    uint32_t line = 1;
    uint32_t column = 1;
    uint32_t partner = 0; // opening brackets: index of the closing one; 0 when there is none
};

} // namespace simhost::script
