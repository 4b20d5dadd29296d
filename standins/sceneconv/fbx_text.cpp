#include "sceneconv/fbx_records.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <utility>

namespace sceneconv {

namespace {

constexpr int deepestBraces = 40;

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\0';
}
bool IsWordEnd(char c) {
    return IsSpace(c) || c == ',' || c == '{' || c == '}' || c == ':';
}

/// The text form: `Name: value, value { Name: ... }`, comments from ';' to the line's end.
class TextReader {
  public:
    explicit TextReader(std::string_view bytes) : bytes_(bytes) {}

    std::vector<FbxRecord> ReadAll() {
        std::vector<FbxRecord> records;
        SkipBlank();
        while (at_ < bytes_.size()) {
            records.push_back(ReadRecord(0));
            SkipBlank();
        }
        return records;
    }

  private:
    [[noreturn]] static void Damaged() { throw std::runtime_error("damaged FBX text"); }

    [[nodiscard]] char Peek() const { return at_ < bytes_.size() ? bytes_[at_] : '\0'; }

    void SkipBlank() {
        while (at_ < bytes_.size()) {
            if (bytes_[at_] == ';')
                at_ = std::min(bytes_.find('\n', at_), bytes_.size());
            else if (IsSpace(bytes_[at_]))
                ++at_;
            else
                return;
        }
    }

    std::string_view Word() {
        const std::size_t start = at_;
        while (at_ < bytes_.size() && !IsWordEnd(bytes_[at_]))
            ++at_;
        return bytes_.substr(start, at_ - start);
    }

    FbxRecord ReadRecord(int depth) {
        FbxRecord record;
        record.name = Word();
        SkipBlank();
        if (record.name.empty() || Peek() != ':' || depth > deepestBraces)
            Damaged();
        ++at_;
        ReadValues(record);
        SkipBlank();
        if (Peek() == '{') {
            ++at_;
            ReadChildren(record, depth);
        }
        return record;
    }

    void ReadChildren(FbxRecord& record, int depth) {
        for (SkipBlank(); Peek() != '}'; SkipBlank()) {
            if (at_ >= bytes_.size())
                Damaged();
            record.children.push_back(ReadRecord(depth + 1));
        }
        ++at_;
    }

    // Values follow on the same line; a comma carries them over to the next one.
    void ReadValues(FbxRecord& record) {
        bool more = true;
        while (more) {
            SkipBlanksOfLine();
            const char c = Peek();
            if (c == '"') {
                record.values.emplace_back(QuotedText());
            } else if (c == '*') {
                SkipArray();
                record.values.emplace_back();
                return;
            } else if (c == '{' || c == '}' || c == '\n' || c == '\0' || c == ';') {
                return;
            } else {
                const std::string_view word = Word();
                if (word.empty() && c != ',')
                    Damaged();
                record.values.push_back(PlainValue(word));
            }
            SkipBlanksOfLine();
            more = Peek() == ',';
            if (more) {
                ++at_;
                SkipBlank();
            }
        }
    }

    void SkipBlanksOfLine() {
        while (Peek() == ' ' || Peek() == '\t' || Peek() == '\r')
            ++at_;
    }

    std::string QuotedText() {
        const std::size_t end = bytes_.find('"', at_ + 1);
        if (end == std::string_view::npos)
            Damaged();
        std::string text(bytes_.substr(at_ + 1, end - at_ - 1));
        at_ = end + 1;
        static constexpr std::pair<std::string_view, const char*> marks[] = {
            {"&quot;", "\""}, {"&cr;", "\r"}, {"&lf;", "\n"}};
        for (const auto& [mark, character] : marks) {
            for (std::size_t i = text.find(mark); i != std::string::npos;
                 i = text.find(mark, i + 1)) {
                text.replace(i, mark.size(), character);
            }
        }
        return text;
    }

    // *24 { a: 1,2,3 }
    void SkipArray() {
        at_ = bytes_.find('}', at_);
        if (at_ == std::string_view::npos)
            Damaged();
        ++at_;
    }

    static FbxValue PlainValue(std::string_view word) {
        std::int64_t whole = 0;
        const char* end = word.data() + word.size();
        if (const auto [next, error] = std::from_chars(word.data(), end, whole);
            error == std::errc{} && next == end) {
            return whole;
        }
        double real = 0;
        if (const auto [next, error] = std::from_chars(word.data(), end, real);
            error == std::errc{} && next == end) {
            return real;
        }
        return std::string(word); // T, Y, W and the like
    }

    std::string_view bytes_;
    std::size_t at_ = 0;
};

} // namespace

std::vector<FbxRecord> ReadTextFbx(std::string_view bytes) {
    return TextReader(bytes).ReadAll();
}

} // namespace sceneconv
