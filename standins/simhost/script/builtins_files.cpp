// Folders, scripts that run other scripts, and the output of scripts.
#include <algorithm>
#include <fstream>

#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/source.h"
#include "simhost/script/text.h"
#include "text/utf8.h"

namespace simhost::script {
namespace {

namespace fs = std::filesystem;

// A text file that scripts write, in UTF-8.
class TextFile final : public Object {
  public:
    explicit TextFile(std::wstring path)
        : path_(std::move(path)), out_(ToFilePath(path_), std::ios::binary | std::ios::trunc) {}

    [[nodiscard]] bool IsOpen() const { return out_.is_open(); }
    void Write(std::wstring_view text) { out_ << utf8::FromWide(text); }
    void Flush() { out_.flush(); }
    void Close() { out_.close(); }

    void Print(Printer& printer, bool) const override { printer.Append(L"<File:" + path_ + L">"); }
    [[nodiscard]] std::wstring ClassName() const override { return L"FileStream"; }

  private:
    std::wstring path_;
    std::ofstream out_;
};

TextFile& FileOf(const wchar_t* function, const Value& value) {
    auto* file = value.As<TextFile>();
    if (!file)
        RaiseNoFunction(function, value);
    if (!file->IsOpen())
        RaiseRuntime(L"Runtime error: " + std::wstring(function) + L" on a closed file");
    return *file;
}

// Where print and format write: the file of `to:`, else the Listener.
void Write(Interpreter& in, const wchar_t* function, const Arguments& args,
           std::wstring_view text) {
    const Value* to = args.FindKeyword(L"to");
    in.Charge(text.size() / 64);
    if (!to)
        in.Print(text);
    else if (!to->IsUndefined())
        FileOf(function, *to).Write(text);
}

Value Print(Interpreter& in, Arguments& args) {
    Write(in, L"print", args, QuotedText(args.items[0]) + L"\n");
    return args.items[0];
}

// Each % takes the next argument.
Value Format(Interpreter& in, Arguments& args) {
    std::wstring text;
    size_t next = 1;
    for (const wchar_t unit : ToString(args.items[0])) {
        if (unit != L'%') {
            text.push_back(unit);
            continue;
        }
        if (next >= args.items.size())
            RaiseRuntime(L"Runtime error: format: too few arguments for the pattern");
        text += TextOf(args.items[next++]);
    }
    Write(in, L"format", args, text);
    return Value::Ok();
}

Value CreateTextFile(Interpreter& in, Arguments& args) {
    const std::wstring& path = ToString(args.items[0], L"FileName");
    if (!in.Options().usesFiles)
        RaiseRuntime(L"Runtime error: files cannot be written here");
    const auto file = std::make_shared<TextFile>(path);
    return file->IsOpen() ? Value(file) : Value();
}

Value DoesFileExist(Interpreter& in, Arguments& args) {
    const std::wstring& path = ToString(args.items[0], L"FileName");
    const Value* allow = args.FindKeyword(L"allowdirectory");
    if (!in.Options().usesFiles || path.empty())
        return Value::Bool(false);
    std::error_code error;
    const fs::file_status status = fs::status(ToFilePath(path), error);
    return Value::Bool(fs::exists(status) &&
                       (!fs::is_directory(status) || !allow || ToBool(*allow)));
}

// getFiles, getDirectories: the folder and the pattern in one text, as "dir\\*.ms".
Value ListFolder(Interpreter& in, const std::wstring& path, bool folders) {
    const size_t start = path.find_last_of(L"\\/:") + 1;
    const std::wstring folder = path.substr(0, start);
    std::wstring pattern = Lower(path.substr(start));
    if (pattern == L"*.*") // takes names without a dot too
        pattern = L"*";
    std::vector<std::wstring> names;
    std::error_code error;
    for (fs::directory_iterator at(ToFilePath(folder), error), end; !error && at != end;
         at.increment(error)) {
        in.Charge(1);
        const std::u8string bytes = at->path().filename().u8string();
        const std::wstring name = utf8::ToWide(std::string(bytes.begin(), bytes.end()));
        std::error_code ignored;
        if (at->is_directory(ignored) == folders && MatchesWildcards(Lower(name), pattern))
            names.push_back(name);
    }
    std::sort(names.begin(), names.end(),
              [](const std::wstring& a, const std::wstring& b) { return Lower(a) < Lower(b); });
    std::vector<Value> found;
    for (const std::wstring& name : names)
        found.push_back(MakeString(folder + name + (folders ? L"\\" : L"")));
    return MakeArray(std::move(found));
}

void DefineList(Interpreter& in, const wchar_t* name, bool folders) {
    in.Define(name, 1, 1, [folders](Interpreter& i, Arguments& args) {
        const std::wstring& path = ToString(args.items[0], L"FileName");
        return i.Options().usesFiles ? ListFolder(i, path, folders) : MakeArray({});
    });
}

Value FileIn(Interpreter& in, Arguments& args) {
    const std::wstring& path = ToString(args.items[0], L"FileName");
    const auto bytes = in.Options().usesFiles ? FindSource(path) : std::nullopt;
    if (!bytes)
        RaiseRuntime(L"Runtime error: fileIn cannot open file: " + path);
    return in.RunNested(DecodeSource(*bytes));
}

} // namespace

void RegisterFiles(Interpreter& in) {
    in.Define(L"doesFileExist", 1, 1, DoesFileExist);
    DefineList(in, L"getFiles", false);
    DefineList(in, L"getDirectories", true);
    in.Define(L"fileIn", 1, 1, FileIn);
    in.Define(L"print", 1, 1, Print);
    in.Define(L"format", 1, NativeFunction::anyCount, Format);
    in.Define(L"createFile", 1, 1, CreateTextFile);
    in.Define(L"flush", 1, 1, [](Interpreter&, Arguments& args) {
        FileOf(L"flush", args.items[0]).Flush();
        return Value::Ok();
    });
    in.Define(L"close", 1, 1, [](Interpreter&, Arguments& args) {
        FileOf(L"close", args.items[0]).Close();
        return Value::Ok();
    });
}

} // namespace simhost::script
