#pragma once
// A strict reader of binary FBX 7.5 for tests: anything that is not where the format wants it
// throws std::runtime_error.
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace fbxtest {

using Value =
    std::variant<std::int64_t, double, std::string, std::vector<double>, std::vector<std::int64_t>>;

struct Record {
    std::string name;
    std::string types; // one letter a value, as in the file
    std::vector<Value> values;
    std::vector<Record> records;
    bool isList = false; // ends with an empty record, as lists do

    /// The first record of that name; throws without one.
    [[nodiscard]] const Record& operator[](std::string_view child) const;
    [[nodiscard]] std::vector<const Record*> All(std::string_view child) const;
    [[nodiscard]] std::int64_t Int(std::size_t i = 0) const;
    [[nodiscard]] const std::string& Text(std::size_t i = 0) const;
    [[nodiscard]] const std::vector<double>& Doubles(std::size_t i = 0) const;
    [[nodiscard]] const std::vector<std::int64_t>& Ints(std::size_t i = 0) const;
    /// The "P" record of that name in "Properties70"; null without one.
    [[nodiscard]] const Record* Property(std::string_view property) const;
    /// Object records: the name without the class that the file appends.
    [[nodiscard]] std::string ObjectName() const;
};

/// All top-level records, under one nameless record.
[[nodiscard]] Record ReadFbx(std::string_view bytes);

} // namespace fbxtest
