// print, format, string streams and text files.
#include "simhost/script/streams.h"

#include <algorithm>
#include <fstream>

#include "simhost/bindings/host_path.h"
#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/source.h"
#include "simhost/script/text.h"

namespace simhost::script {

StreamObject::StreamObject(std::wstring text) : text_(std::move(text)) {
    share_.Set(text_.size() * sizeof(wchar_t));
}

StreamObject::StreamObject(std::wstring text, std::wstring path)
    : text_(std::move(text)), path_(std::move(path)), isFile_(true) {
    share_.Set(text_.size() * sizeof(wchar_t));
}

StreamObject::~StreamObject() {
    try {
        Flush();
    } catch (...) { // a full disk must not end the host
    }
}

void StreamObject::Write(Interpreter& interpreter, std::wstring_view text) {
    if (text_.size() + text.size() > interpreter.Options().limits.stringUnits)
        throw ScriptError(ScriptError::Kind::Limit, L"String too long");
    interpreter.Charge(text.size() / 64);
    share_.Set((text_.size() + text.size()) * sizeof(wchar_t));
    text_.insert(at_, text);
    at_ += text.size();
    changed_ = true;
}

std::wstring StreamObject::ReadLine() {
    const size_t end = std::min(text_.find(L'\n', at_), text_.size());
    std::wstring line = text_.substr(at_, end - at_);
    at_ = std::min(end + 1, text_.size());
    if (!line.empty() && line.back() == L'\r')
        line.pop_back();
    return line;
}

std::wstring StreamObject::ReadUnits(size_t count) {
    std::wstring units = text_.substr(at_, count);
    at_ += units.size();
    return units;
}

std::wstring StreamObject::ReadUntil(const std::wstring& delimiters) {
    const size_t end = std::min(text_.find_first_of(delimiters, at_), text_.size());
    std::wstring part = text_.substr(at_, end - at_);
    at_ = std::min(end + 1, text_.size());
    return part;
}

bool StreamObject::SkipTo(const std::wstring& text) {
    const size_t found = text_.find(text, at_);
    at_ = found == std::wstring::npos ? text_.size() : found + text.size();
    return found != std::wstring::npos;
}

bool StreamObject::Flush() {
    if (!isFile_ || !changed_ || path_.empty())
        return true;
    changed_ = false;
    std::ofstream out(ToHostPath(path_), std::ios::binary | std::ios::trunc);
    const std::string bytes = ToUtf8(text_);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return out.good();
}

void StreamObject::Close() {
    Flush();
    open_ = !isFile_;
}

void StreamObject::Print(Printer& printer, bool) const {
    printer.Put(isFile_ ? L"<File:" + path_ + L">" : L"StringStream:\"" + text_ + L"\"");
}

namespace {

StreamObject& ToStream(const wchar_t* function, const Value& value) {
    auto* stream = value.As<StreamObject>();
    if (!stream)
        RaiseNoFunction(function, value);
    if (!stream->IsOpen())
        RaiseRuntime(L"Runtime error: " + std::wstring(function) + L" on a closed file");
    return *stream;
}

// Where print and format write: the stream of `to:`, else the Listener.
void WriteOut(Interpreter& in, const wchar_t* function, Arguments& args, std::wstring_view text) {
    const Value* to = args.Keyword(L"to");
    if (!to)
        in.Print(text);
    else if (!to->IsUndefined())
        ToStream(function, *to).Write(in, text);
}

Value PrintValue(Interpreter& in, Arguments& args) {
    WriteOut(in, L"print", args, QuotedText(args.items[0]) + L"\n");
    return args.items[0];
}

// Each % takes the next argument; \% stands for itself.
Value Format(Interpreter& in, Arguments& args) {
    const std::wstring& pattern = ToString(args.items[0]);
    std::wstring text;
    size_t next = 1;
    for (size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != L'%') {
            text.push_back(pattern[i]);
            continue;
        }
        if (next >= args.items.size())
            RaiseRuntime(L"Runtime error: format: too few arguments for the pattern");
        text += TextOf(args.items[next++]);
        in.Charge(1);
    }
    WriteOut(in, L"format", args, text);
    return Value::Ok();
}

Value OpenFile(Interpreter& in, Arguments& args) {
    const std::wstring& path = ToFileName(args.items[0]);
    const Value* given = args.Keyword(L"mode");
    const std::wstring mode = given ? Lower(ToString(*given)) : L"r";
    const bool writes = mode.find_first_of(L"wa+") != std::wstring::npos;
    if (writes && !in.Options().writesFiles)
        RaiseRuntime(L"Runtime error: files cannot be written here");
    if (!in.Options().readsFiles)
        return {};
    std::wstring text;
    if (mode[0] != L'w') {
        const auto bytes = ReadWholeFile(path, in.Options().limits.stringUnits);
        if (!bytes && mode[0] != L'a')
            return {};
        text = DecodeSource(bytes.value_or(std::string()));
    }
    auto stream = std::make_shared<StreamObject>(std::move(text), writes ? path : std::wstring());
    if (mode[0] == L'a')
        stream->SeekEnd();
    if (mode[0] == L'w') {
        std::ofstream out(ToHostPath(path), std::ios::binary | std::ios::trunc);
        if (!out)
            return {};
    }
    return {stream};
}

void RequireMore(const StreamObject& stream) {
    if (stream.AtEnd())
        RaiseRuntime(L"Runtime error: read past end of file");
}

void RegisterReading(Interpreter& in) {
    in.Define(L"readLine", 1, 1, [](Interpreter& i, Arguments& args) {
        StreamObject& stream = ToStream(L"readLine", args.items[0]);
        RequireMore(stream);
        i.Charge(4);
        return MakeString(stream.ReadLine());
    });
    in.Define(L"readChar", 1, 1, [](Interpreter&, Arguments& args) {
        StreamObject& stream = ToStream(L"readChar", args.items[0]);
        RequireMore(stream);
        return MakeString(stream.ReadUnits(1));
    });
    in.Define(L"readChars", 2, 2, [](Interpreter& i, Arguments& args) {
        StreamObject& stream = ToStream(L"readChars", args.items[0]);
        i.Charge(4);
        return MakeString(stream.ReadUnits(static_cast<size_t>(std::max(0, ToInt(args.items[1])))));
    });
    in.Define(L"readDelimitedString", 2, 2, [](Interpreter& i, Arguments& args) {
        StreamObject& stream = ToStream(L"readDelimitedString", args.items[0]);
        RequireMore(stream);
        i.Charge(4);
        return MakeString(stream.ReadUntil(ToString(args.items[1])));
    });
    in.Define(L"skipToString", 2, 2, [](Interpreter& i, Arguments& args) {
        StreamObject& stream = ToStream(L"skipToString", args.items[0]);
        i.Charge(4);
        return stream.SkipTo(ToString(args.items[1])) ? Value::Ok() : Value();
    });
    in.Define(L"skipToNextLine", 1, 1, [](Interpreter&, Arguments& args) {
        ToStream(L"skipToNextLine", args.items[0]).ReadLine();
        return Value::Ok();
    });
    in.Define(L"eof", 1, 1, [](Interpreter&, Arguments& args) {
        return Value::Bool(ToStream(L"eof", args.items[0]).AtEnd());
    });
    in.Define(L"filePos", 1, 1, [](Interpreter&, Arguments& args) {
        return Value::Integer(static_cast<int32_t>(ToStream(L"filePos", args.items[0]).Position()));
    });
    in.Define(L"seek", 2, 2, [](Interpreter&, Arguments& args) {
        StreamObject& stream = ToStream(L"seek", args.items[0]);
        if (args.items[1].As<NameObject>())
            stream.SeekEnd();
        else
            stream.Seek(static_cast<size_t>(std::max(0, ToInt(args.items[1]))));
        return Value::Ok();
    });
}

} // namespace

void RegisterStreams(Interpreter& in) {
    in.Define(L"print", 1, 2, PrintValue);
    in.Define(L"format", 1, NativeFunction::anyCount, Format);
    in.FindClass(L"StringStream")->create = [](Interpreter&, Arguments& args) {
        if (args.items.size() != 1)
            RaiseArgumentCount(L"StringStream", 1, args.items.size());
        auto stream = std::make_shared<StreamObject>(ToString(args.items[0]));
        return Value(stream);
    };
    in.FindClass(L"String")->convert = [](Interpreter& i, const Value& value) {
        if (value.As<StringObject>())
            return value;
        if (auto* stream = value.As<StreamObject>();
            stream && stream->ClassName() == L"StringStream") {
            const size_t at = stream->Position();
            stream->Seek(0);
            Value text = MakeString(stream->ReadUnits(SIZE_MAX));
            stream->Seek(at);
            return text;
        }
        std::wstring text = TextOf(value);
        i.Charge(text.size() / 64);
        return MakeString(std::move(text));
    };
    in.Define(L"openFile", 1, 1, OpenFile);
    in.Define(L"createFile", 1, 1, [](Interpreter& i, Arguments& args) {
        args.keywords.clear();
        args.keywords.emplace_back(L"mode", MakeString(L"w"));
        return OpenFile(i, args);
    });
    in.Define(L"close", 1, 1, [](Interpreter&, Arguments& args) {
        ToStream(L"close", args.items[0]).Close();
        return Value::Ok();
    });
    in.Define(L"flush", 1, 1, [](Interpreter&, Arguments& args) {
        ToStream(L"flush", args.items[0]).Flush();
        return Value::Ok();
    });
    RegisterReading(in);
}

} // namespace simhost::script
