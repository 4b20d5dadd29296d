#include "simhost/maxscript/check.h"

#include "simhost/maxscript/parser.h"
#include "simhost/maxscript/scope.h"

namespace simhost::maxscript {

std::optional<ScriptError> CheckScript(std::wstring text) {
    try {
        const TokenList tokens(std::move(text));
        Parser parser(tokens);
        GlobalTable globals;
        while (const ExprPtr expr = parser.Next())
            BindScopes(*expr, globals, {.strict = false});
        return std::nullopt;
    } catch (const ScriptError& error) {
        return error;
    }
}

} // namespace simhost::maxscript
