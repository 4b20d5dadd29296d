#include "simhost/script/check.h"

#include "simhost/script/parser.h"
#include "simhost/script/scope.h"

namespace simhost::script {

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

} // namespace simhost::script
