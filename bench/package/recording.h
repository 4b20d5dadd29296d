#pragma once
// The calls of a JSON library's writer that write one package, recorded from a written one.
#include <rapidjson/reader.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace brimwave {

enum class Call : std::uint8_t {
    Null,
    True,
    False,
    Int,
    Double,
    Text,
    Key,
    StartObject,
    EndObject,
    StartArray,
    EndArray
};

/// The calls that write one package, with their values as close together as they can be.
template <class Encoding>
struct Recording : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Recording<Encoding>> {
    using Char = typename Encoding::Ch;
    std::vector<Call> calls;
    std::vector<int> integers;
    std::vector<double> doubles;
    std::vector<rapidjson::SizeType> lengths;
    std::vector<Char> text; // of all keys and strings

    bool Put(Call call) {
        calls.push_back(call);
        return true;
    }
    bool Put(Call call, const char* chars, rapidjson::SizeType size) {
        text.insert(text.end(), chars, chars + size); // the scene's texts are all ASCII
        lengths.push_back(size);
        return Put(call);
    }
    bool Null() { return Put(Call::Null); }
    bool Bool(bool value) { return Put(value ? Call::True : Call::False); }
    bool Int(int value) {
        integers.push_back(value);
        return Put(Call::Int);
    }
    bool Uint(unsigned value) { return Int(static_cast<int>(value)); }
    bool Double(double value) {
        doubles.push_back(value);
        return Put(Call::Double);
    }
    bool String(const char* chars, rapidjson::SizeType size, bool /*copy*/) {
        return Put(Call::Text, chars, size);
    }
    bool Key(const char* chars, rapidjson::SizeType size, bool /*copy*/) {
        return Put(Call::Key, chars, size);
    }
    bool StartObject() { return Put(Call::StartObject); }
    bool EndObject(rapidjson::SizeType) { return Put(Call::EndObject); }
    bool StartArray() { return Put(Call::StartArray); }
    bool EndArray(rapidjson::SizeType) { return Put(Call::EndArray); }
};

template <class Encoding>
Recording<Encoding> Record(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    Recording<Encoding> recording;
    rapidjson::Reader reader;
    rapidjson::StringStream stream(text.c_str());
    if (!reader.Parse(stream, recording))
        throw std::runtime_error("the package is no JSON");
    return recording;
}

template <class Encoding, class Writer>
void Replay(const Recording<Encoding>& recording, Writer& writer) {
    const int* integer = recording.integers.data();
    const double* number = recording.doubles.data();
    const rapidjson::SizeType* length = recording.lengths.data();
    const auto* text = recording.text.data();
    for (const Call call : recording.calls) {
        switch (call) {
        case Call::Null:
            writer.Null();
            break;
        case Call::True:
        case Call::False:
            writer.Bool(call == Call::True);
            break;
        case Call::Int:
            writer.Int(*integer++);
            break;
        case Call::Double:
            writer.Double(*number++);
            break;
        case Call::Text:
            writer.String(text, *length);
            text += *length++;
            break;
        case Call::Key:
            writer.Key(text, *length);
            text += *length++;
            break;
        case Call::StartObject:
            writer.StartObject();
            break;
        case Call::EndObject:
            writer.EndObject();
            break;
        case Call::StartArray:
            writer.StartArray();
            break;
        case Call::EndArray:
            writer.EndArray();
            break;
        }
    }
}

} // namespace brimwave
