#include "simhost/json/json_view.h"

#include "text/utf8.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace simhost {

bool JsonView::Has(const char* key) const {
    return json_->is_object() && json_->contains(key);
}

JsonView JsonView::Member(const std::string& key) const {
    Object();
    const auto found = json_->find(key);
    if (found == json_->end())
        Complain("the member \"" + key + "\" is missing");
    return {found.value(), this, found.key(), 0};
}

const JsonView& JsonView::Object() const {
    if (!json_->is_object())
        Expected("an object {..}");
    return *this;
}

const JsonView& JsonView::Array() const {
    if (!json_->is_array())
        Expected("a list [..]");
    return *this;
}

const JsonView& JsonView::Array(size_t count) const {
    if (!json_->is_array() || json_->size() != count)
        Expected("a list of " + std::to_string(count));
    return *this;
}

std::string_view JsonView::Utf8() const {
    if (!json_->is_string())
        Expected("a text");
    return json_->get_ref<const std::string&>();
}

std::wstring JsonView::Text() const {
    return utf8::ToWide(Utf8());
}

int JsonView::Integer() const {
    const bool fits = json_->is_number_integer() && *json_ >= std::numeric_limits<int>::min() &&
                      *json_ <= std::numeric_limits<int>::max();
    if (!fits)
        Expected("an integer of 32 bits");
    return json_->get<int>();
}

std::uint32_t JsonView::Unsigned() const {
    const bool fits = json_->is_number_integer() && *json_ >= 0 &&
                      *json_ <= std::numeric_limits<std::uint32_t>::max();
    if (!fits)
        Expected("an integer from 0 to 4294967295");
    return json_->get<std::uint32_t>();
}

bool JsonView::Bool() const {
    if (json_->is_boolean())
        return json_->get<bool>();
    if (json_->is_number_integer() && (*json_ == 0 || *json_ == 1))
        return *json_ == 1;
    Expected("true or false");
}

float JsonView::Number() const {
    if (json_->is_number())
        return static_cast<float>(std::clamp(json_->get<double>(),
                                             -double(std::numeric_limits<float>::max()),
                                             double(std::numeric_limits<float>::max())));
    if (json_->is_string()) {
        const std::string_view text = Utf8();
        if (text == "nan")
            return std::numeric_limits<float>::quiet_NaN();
        if (text == "inf")
            return std::numeric_limits<float>::infinity();
        if (text == "-inf")
            return -std::numeric_limits<float>::infinity();
    }
    Expected("a number");
}

std::uint32_t JsonView::Code() const {
    if (!json_->is_string())
        return Unsigned();
    const std::string text(Utf8());
    size_t used = 0;
    unsigned long long value = 0;
    try {
        value = std::stoull(text, &used, 0);
    } catch (const std::exception&) {
        used = 0;
    }
    if (used == 0 || used != text.size() || value > std::numeric_limits<std::uint32_t>::max())
        Expected("a number or a text such as \"0x240\"");
    return static_cast<std::uint32_t>(value);
}

std::optional<JsonView> JsonView::Find(const char* key) const {
    return Has(key) ? std::optional(Member(key)) : std::nullopt;
}

void JsonView::OnlyMembers(std::initializer_list<std::string_view> names,
                           std::initializer_list<std::string_view> more) const {
    std::vector<std::string_view> all(names);
    all.insert(all.end(), more);
    ForMembers([&](const std::string& key, const JsonView& view) {
        if (std::find(all.begin(), all.end(), key) != all.end())
            return;
        std::string known;
        for (const std::string_view name : all)
            known += (known.empty() ? "" : ", ") + std::string(name);
        view.Complain("unknown member; expected one of: " + known);
    });
}

void JsonView::Expected(const std::string& what) const {
    std::string found = json_->is_string() || json_->is_primitive()
                            ? json_->dump(-1, ' ', false, Json::error_handler_t::replace)
                            : std::string(json_->type_name());
    if (found.size() > 60)
        found = found.substr(0, 57) + "...";
    Complain("expected " + what + ", found " + found);
}

void JsonView::Complain(const std::string& complaint) const {
    throw JsonFault(Place(), complaint);
}

std::string JsonView::Place() const {
    if (!up_)
        return "";
    std::string key = keyed_ ? std::string(key_) : std::to_string(index_);
    for (size_t at = 0; (at = key.find_first_of("~/", at)) != std::string::npos; at += 2)
        key.replace(at, 1, key[at] == '~' ? "~0" : "~1");
    return up_->Place() + "/" + key;
}

Json ParseJson(std::string_view text) {
    try {
        return Json::parse(text);
    } catch (const Json::parse_error& error) {
        const auto before = text.substr(0, std::min(text.size(), error.byte ? error.byte - 1 : 0));
        const auto line = std::count(before.begin(), before.end(), '\n') + 1;
        const size_t start = before.rfind('\n');
        const size_t column =
            start == std::string_view::npos ? before.size() + 1 : before.size() - start;
        std::string what = error.what();
        if (const size_t colon = what.find(": "); colon != std::string::npos)
            what = what.substr(colon + 2);
        throw JsonFault("line " + std::to_string(line) + ", column " + std::to_string(column),
                        "broken JSON: " + what);
    }
}

} // namespace simhost
