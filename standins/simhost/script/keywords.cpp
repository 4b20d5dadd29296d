#include <unordered_map>

#include "simhost/script/text.h"
#include "simhost/script/token.h"

namespace simhost::script {

Key FindKeyword(std::wstring_view word) {
    static const std::unordered_map<std::wstring, Key> keywords = {
        {L"about", Key::About},
        {L"and", Key::And},
        {L"animate", Key::Animate},
        {L"as", Key::As},
        {L"at", Key::At},
        {L"attributes", Key::Attributes},
        {L"by", Key::By},
        {L"case", Key::Case},
        {L"catch", Key::Catch},
        {L"collect", Key::Collect},
        {L"continue", Key::Continue},
        {L"coordsys", Key::Coordsys},
        {L"do", Key::Do},
        {L"else", Key::Else},
        {L"exit", Key::Exit},
        {L"fn", Key::Fn},
        {L"for", Key::For},
        {L"function", Key::Fn},
        {L"global", Key::Global},
        {L"if", Key::If},
        {L"in", Key::In},
        {L"local", Key::Local},
        {L"macroscript", Key::MacroScript},
        {L"mapped", Key::Mapped},
        {L"max", Key::Max},
        {L"not", Key::Not},
        {L"of", Key::Of},
        {L"off", Key::Off},
        {L"on", Key::On},
        {L"or", Key::Or},
        {L"parameters", Key::Parameters},
        {L"persistent", Key::Persistent},
        {L"plugin", Key::Plugin},
        {L"rcmenu", Key::RcMenu},
        {L"return", Key::Return},
        {L"rollout", Key::Rollout},
        {L"set", Key::Set},
        {L"struct", Key::Struct},
        {L"then", Key::Then},
        {L"throw", Key::Throw},
        {L"to", Key::To},
        {L"tool", Key::Tool},
        {L"try", Key::Try},
        {L"undo", Key::Undo},
        {L"utility", Key::Utility},
        {L"when", Key::When},
        {L"where", Key::Where},
        {L"while", Key::While},
        {L"with", Key::With},
    };
    if (word.size() < 2 || word.size() > 11)
        return Key::None;
    const auto found = keywords.find(Lower(word));
    return found == keywords.end() ? Key::None : found->second;
}

bool IsSoftKeyword(Key key) {
    switch (key) {
    case Key::Set:
    case Key::Tool:
    case Key::Parameters:
    case Key::Attributes:
    case Key::Utility:
    case Key::Plugin:
    case Key::RcMenu:
        return true;
    default:
        return false;
    }
}

} // namespace simhost::script
