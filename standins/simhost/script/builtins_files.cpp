// File names, folders, and scripts that run other scripts.
#include <algorithm>
#include <filesystem>

#include "simhost/bindings/host_path.h"
#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/lexer.h"
#include "simhost/script/raise.h"
#include "simhost/script/source.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

namespace fs = std::filesystem;

size_t NameStart(const std::wstring& path) {
    const size_t slash = path.find_last_of(L"\\/:");
    return slash == std::wstring::npos ? 0 : slash + 1;
}

size_t TypeStart(const std::wstring& path) {
    const size_t dot = path.rfind(L'.');
    return dot == std::wstring::npos || dot < NameStart(path) ? path.size() : dot;
}

void RegisterNames(Interpreter& in) {
    in.Define(L"getFilenamePath", 1, 1, [](Interpreter&, Arguments& args) {
        const std::wstring& path = ToFileName(args.items[0]);
        return MakeString(path.substr(0, NameStart(path)));
    });
    in.Define(L"getFilenameFile", 1, 1, [](Interpreter&, Arguments& args) {
        const std::wstring& path = ToFileName(args.items[0]);
        const size_t start = NameStart(path);
        return MakeString(path.substr(start, TypeStart(path) - start));
    });
    in.Define(L"getFilenameType", 1, 1, [](Interpreter&, Arguments& args) {
        const std::wstring& path = ToFileName(args.items[0]);
        return MakeString(path.substr(TypeStart(path)));
    });
    in.Define(L"filenameFromPath", 1, 1, [](Interpreter&, Arguments& args) {
        const std::wstring& path = ToFileName(args.items[0]);
        return MakeString(path.substr(NameStart(path)));
    });
}

bool IsFolder(const std::wstring& path) {
    std::error_code error;
    return fs::is_directory(ToHostPath(path), error);
}

Value DoesFileExist(Interpreter& in, Arguments& args) {
    const std::wstring& path = ToFileName(args.items[0]);
    const Value* allow = args.Keyword(L"allowdirectory");
    if (!in.Options().readsFiles || path.empty())
        return Value::Bool(false);
    std::error_code error;
    const fs::path file = ToHostPath(path);
    if (!fs::exists(file, error))
        return Value::Bool(false);
    return Value::Bool(!fs::is_directory(file, error) || !allow || ToBool(*allow));
}

void ListFolder(Interpreter& in, const std::wstring& folder, const std::wstring& pattern,
                bool folders, bool recurse, std::vector<Value>& found, int depth) {
    std::vector<std::wstring> names;
    std::vector<std::wstring> subFolders;
    std::error_code error;
    for (fs::directory_iterator at(ToHostPath(folder), error), end; !error && at != end;
         at.increment(error)) {
        in.Charge(1);
        const std::wstring name = FromHostPath(at->path().filename());
        std::error_code ignored;
        const bool isFolder = at->is_directory(ignored);
        if (isFolder)
            subFolders.push_back(name);
        if (isFolder == folders && MatchesWildcards(Lower(name), pattern))
            names.push_back(name);
    }
    const auto byName = [](const std::wstring& a, const std::wstring& b) {
        return Lower(a) < Lower(b);
    };
    std::sort(names.begin(), names.end(), byName);
    for (const std::wstring& name : names)
        found.push_back(MakeString(folder + name + (folders ? L"\\" : L"")));
    if (!recurse || depth > 64)
        return;
    std::sort(subFolders.begin(), subFolders.end(), byName);
    for (const std::wstring& name : subFolders)
        ListFolder(in, folder + name + L"\\", pattern, folders, recurse, found, depth + 1);
}

// getFiles, getDirectories: the folder and the pattern in one text, as "dir\\*.ms".
Value List(Interpreter& in, Arguments& args, bool folders) {
    const std::wstring& path = ToFileName(args.items[0]);
    const Value* recurse = args.Keyword(L"recurse");
    std::vector<Value> found;
    if (in.Options().readsFiles) {
        const size_t start = NameStart(path);
        std::wstring pattern = Lower(path.substr(start));
        if (pattern == L"*.*") // takes names without a dot too
            pattern = L"*";
        ListFolder(in, path.substr(0, start), pattern, folders, recurse && ToBool(*recurse), found,
                   0);
    }
    return MakeArray(std::move(found));
}

void RequireWriting(Interpreter& in) {
    if (!in.Options().writesFiles)
        RaiseRuntime(L"Runtime error: files cannot be written here");
}

void RegisterChanges(Interpreter& in) {
    in.Define(L"deleteFile", 1, 1, [](Interpreter& i, Arguments& args) {
        RequireWriting(i);
        const std::wstring& path = ToFileName(args.items[0]);
        std::error_code error;
        return Value::Bool(!IsFolder(path) && fs::remove(ToHostPath(path), error));
    });
    in.Define(L"makeDir", 1, 1, [](Interpreter& i, Arguments& args) {
        RequireWriting(i);
        const std::wstring& path = ToFileName(args.items[0]);
        std::error_code error;
        fs::create_directories(ToHostPath(path), error);
        return Value::Bool(IsFolder(path));
    });
    in.Define(L"copyFile", 2, 2, [](Interpreter& i, Arguments& args) {
        RequireWriting(i);
        std::error_code error;
        return Value::Bool(fs::copy_file(ToHostPath(ToFileName(args.items[0])),
                                         ToHostPath(ToFileName(args.items[1])), error));
    });
    in.Define(L"renameFile", 2, 2, [](Interpreter& i, Arguments& args) {
        RequireWriting(i);
        std::error_code error;
        const fs::path to = ToHostPath(ToFileName(args.items[1]));
        if (fs::exists(to, error))
            return Value::Bool(false);
        fs::rename(ToHostPath(ToFileName(args.items[0])), to, error);
        return Value::Bool(!error);
    });
}

Value FileIn(Interpreter& in, Arguments& args) {
    const std::wstring& path = ToFileName(args.items[0]);
    const auto bytes =
        in.Options().readsFiles ? ReadWholeFile(path, maxScriptLength * 4) : std::nullopt;
    if (!bytes)
        RaiseRuntime(L"Runtime error: fileIn cannot open file: " + path);
    return in.RunNested(DecodeSource(*bytes));
}

std::wstring Joined(std::wstring path, const std::wstring& leaf) {
    if (!path.empty() && path.back() != L'\\' && path.back() != L'/')
        path += L'\\';
    return path + leaf;
}

void RegisterPathConfig(Interpreter& in) {
    InterfaceObject& paths = in.DefineInterface(L"pathConfig");
    paths.Function(L"appendPath", 2, 2, [](Interpreter&, Arguments& args) {
        return MakeString(Joined(ToFileName(args.items[0]), ToFileName(args.items[1])));
    });
    paths.Function(L"removePathLeaf", 1, 1, [](Interpreter&, Arguments& args) {
        const std::wstring& path = ToFileName(args.items[0]);
        const size_t start = NameStart(path);
        return MakeString(path.substr(0, start > 0 ? start - 1 : 0));
    });
    paths.Function(L"stripPathToLeaf", 1, 1, [](Interpreter&, Arguments& args) {
        const std::wstring& path = ToFileName(args.items[0]);
        return MakeString(path.substr(NameStart(path)));
    });
    paths.Function(L"isAbsolutePath", 1, 1, [](Interpreter&, Arguments& args) {
        const std::wstring& path = ToFileName(args.items[0]);
        return Value::Bool((!path.empty() && (path[0] == L'\\' || path[0] == L'/')) ||
                           (path.size() > 1 && path[1] == L':'));
    });
}

} // namespace

void RegisterFiles(Interpreter& in) {
    RegisterNames(in);
    RegisterChanges(in);
    RegisterPathConfig(in);
    in.Define(L"doesFileExist", 1, 1, DoesFileExist);
    in.Define(L"doesDirectoryExist", 1, 1, [](Interpreter& i, Arguments& args) {
        return Value::Bool(i.Options().readsFiles && IsFolder(ToFileName(args.items[0])));
    });
    in.Define(L"getFiles", 1, 1,
              [](Interpreter& i, Arguments& args) { return List(i, args, false); });
    in.Define(L"getDirectories", 1, 1,
              [](Interpreter& i, Arguments& args) { return List(i, args, true); });
    in.Define(L"getFileSize", 1, 1, [](Interpreter& i, Arguments& args) {
        std::error_code error;
        const auto size = i.Options().readsFiles
                              ? fs::file_size(ToHostPath(ToFileName(args.items[0])), error)
                              : 0;
        return Value::Integer64(error ? 0 : static_cast<int64_t>(size));
    });
    in.Define(L"fileIn", 1, 1, FileIn);
    in.Define(L"execute", 1, 1,
              [](Interpreter& i, Arguments& args) { return i.RunNested(ToString(args.items[0])); });
}

} // namespace simhost::script
