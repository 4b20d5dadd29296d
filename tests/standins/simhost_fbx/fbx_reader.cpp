#include "tests/standins/simhost_fbx/fbx_reader.h"

#include <zlib.h>

#include <cstring>
#include <stdexcept>

namespace fbxtest {

namespace {

void Require(bool condition, const char* what, std::size_t at) {
    if (!condition)
        throw std::runtime_error(std::string(what) + " at byte " + std::to_string(at));
}

class Reader {
  public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    Record ReadFile() {
        using namespace std::string_view_literals;
        Require(Take(23) == "Kaydara FBX Binary  \0\x1a\0"sv, "no mark", 0);
        const auto version = Get<std::uint32_t>();
        Require(version == 7500, "not version 7.5", 23);
        Record file;
        while (ReadRecord(file.records)) {
        }
        ReadFooter(version);
        return file;
    }

  private:
    std::string_view Take(std::size_t count) {
        Require(count <= bytes_.size() - at_, "file ends within a value", at_);
        const std::string_view part = bytes_.substr(at_, count);
        at_ += count;
        return part;
    }

    template <class T>
    T Get() {
        T value;
        std::memcpy(&value, Take(sizeof value).data(), sizeof value);
        return value;
    }

    /// False for the empty record.
    bool ReadRecord(std::vector<Record>& into) {
        const std::size_t start = at_;
        const auto end = Get<std::uint64_t>();
        const auto valueCount = Get<std::uint64_t>();
        const auto valueBytes = Get<std::uint64_t>();
        const std::string name(Take(Get<std::uint8_t>()));
        if (end == 0) {
            Require(valueCount == 0 && valueBytes == 0 && name.empty(), "odd empty record", start);
            return false;
        }
        Record record;
        record.name = name;
        const std::size_t values = at_;
        for (std::uint64_t i = 0; i < valueCount; ++i)
            ReadValue(record);
        Require(at_ == values + valueBytes, "wrong length of values", start);
        if (at_ < end) {
            record.isList = true;
            while (ReadRecord(record.records)) {
            }
        }
        Require(at_ == end, "wrong end of record", start);
        into.push_back(std::move(record));
        return true;
    }

    void ReadValue(Record& record) {
        const char type = Get<char>();
        record.types += type;
        switch (type) {
        case 'C':
            return record.values.emplace_back(std::int64_t{Get<char>()}), void();
        case 'I':
            return record.values.emplace_back(std::int64_t{Get<std::int32_t>()}), void();
        case 'L':
            return record.values.emplace_back(Get<std::int64_t>()), void();
        case 'F':
            return record.values.emplace_back(double{Get<float>()}), void();
        case 'D':
            return record.values.emplace_back(Get<double>()), void();
        case 'S':
        case 'R':
            return record.values.emplace_back(std::string(Take(Get<std::uint32_t>()))), void();
        case 'd':
            return record.values.emplace_back(ReadArray<double, double>()), void();
        case 'i':
            return record.values.emplace_back(ReadArray<std::int32_t, std::int64_t>()), void();
        default:
            Require(false, "unknown type of value", at_ - 1);
        }
    }

    template <class T, class Out>
    std::vector<Out> ReadArray() {
        const auto count = Get<std::uint32_t>();
        const auto encoding = Get<std::uint32_t>();
        const std::string_view stored = Take(Get<std::uint32_t>());
        std::string plain(count * sizeof(T), '\0');
        Require(encoding <= 1, "unknown encoding", at_);
        if (encoding == 1) {
            auto size = static_cast<uLongf>(plain.size());
            const int result =
                uncompress(reinterpret_cast<Bytef*>(plain.data()), &size,
                           reinterpret_cast<const Bytef*>(stored.data()), stored.size());
            Require(result == Z_OK && size == plain.size(), "array does not unpack", at_);
        } else {
            Require(stored.size() == plain.size(), "array of a wrong length", at_);
            plain = stored;
        }
        std::vector<Out> values;
        for (std::size_t i = 0; i < count; ++i) {
            T value;
            std::memcpy(&value, plain.data() + i * sizeof value, sizeof value);
            values.push_back(value);
        }
        return values;
    }

    void ReadFooter(std::uint32_t version) {
        using namespace std::string_view_literals;
        Take(16); // code that goes with the file's id
        const std::size_t padding = 16 - at_ % 16;
        const auto zeros = [this](std::size_t count) {
            Require(Take(count) == std::string(count, '\0'), "padding is not zero", at_);
        };
        zeros(padding);
        zeros(4);
        Require(Get<std::uint32_t>() == version, "wrong version in the footer", at_);
        zeros(120);
        Require(Take(16) == "\xf8\x5a\x8c\x6a\xde\xf5\xd9\x7e\xec\xe9\x0c\xe3\x75\x8f\x29\x0b"sv,
                "no end mark", at_);
        Require(at_ == bytes_.size(), "bytes after the end", at_);
    }

    std::string_view bytes_;
    std::size_t at_ = 0;
};

} // namespace

const Record& Record::operator[](std::string_view child) const {
    for (const Record& record : records)
        if (record.name == child)
            return record;
    throw std::runtime_error("no record " + std::string(child) + " in " + name);
}

std::vector<const Record*> Record::All(std::string_view child) const {
    std::vector<const Record*> found;
    for (const Record& record : records)
        if (record.name == child)
            found.push_back(&record);
    return found;
}

std::int64_t Record::Int(std::size_t i) const {
    return std::get<std::int64_t>(values.at(i));
}

const std::string& Record::Text(std::size_t i) const {
    return std::get<std::string>(values.at(i));
}

const std::vector<double>& Record::Doubles(std::size_t i) const {
    return std::get<std::vector<double>>(values.at(i));
}

const std::vector<std::int64_t>& Record::Ints(std::size_t i) const {
    return std::get<std::vector<std::int64_t>>(values.at(i));
}

const Record* Record::Property(std::string_view property) const {
    for (const Record& list : records)
        if (list.name == "Properties70")
            for (const Record& entry : list.records)
                if (entry.Text() == property)
                    return &entry;
    return nullptr;
}

std::string Record::ObjectName() const {
    const std::string& text = Text(1);
    return text.substr(0, text.find('\0'));
}

Record ReadFbx(std::string_view bytes) {
    return Reader(bytes).ReadFile();
}

} // namespace fbxtest
