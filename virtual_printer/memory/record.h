// Values as compact bytes and back: whole numbers take as many bytes as they need, texts and lists their
// length first. A structure is a record of its members (members.h) with its length in front: one that was
// written when it had fewer members is read all the same, and those behind keep their defaults.
#pragma once

#include "virtual_printer/fiscal/moment.h"

#include <array>
#include <bit>
#include <chrono>
#include <concepts>
#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

namespace virtual_printer {

// The bytes are not what a writer has written.
class DamagedRecord : public std::runtime_error
{
public:
    DamagedRecord() : runtime_error("a record does not end where it should") {}
};

template <typename Type>
concept Whole = std::integral<Type> || std::is_enum_v<Type>;

// Seven bits a byte, the lowest first; the sign is the lowest bit of all.
std::string wholeToBytes(std::int64_t value);

class RecordWriter
{
public:
    [[nodiscard]] const std::string& bytes() const { return written; }

    template <Whole Value>
    void put(Value value)
    {
        written += wholeToBytes(static_cast<std::int64_t>(value));
    }
    void put(double value) { put(std::bit_cast<std::int64_t>(value)); }
    void put(Moment moment) { put(moment.time_since_epoch().count()); }
    void put(std::chrono::seconds seconds) { put(seconds.count()); }
    void put(const std::string& text)
    {
        put(text.size());
        written += text;
    }
    template <typename Value>
    void put(const std::optional<Value>& value)
    {
        put(value.has_value());
        if (value) {
            put(*value);
        }
    }
    template <typename Value, std::size_t size>
    void put(const std::array<Value, size>& values)
    {
        for (const Value& value : values) {
            put(value);
        }
    }
    template <typename Value>
    void put(const std::vector<Value>& values)
    {
        put(values.size());
        for (const Value& value : values) {
            put(value);
        }
    }
    void put(const std::vector<bool>& dots);
    template <typename Key, typename Value>
    void put(const std::map<Key, Value>& values)
    {
        put(values.size());
        for (const auto& [key, value] : values) {
            put(key);
            put(value);
        }
    }
    template <typename... Members>
    void put(const std::tuple<Members&...>& members)
    {
        const std::size_t start = written.size();
        std::apply([this](const auto&... member) { (this->put(member), ...); }, members);
        written.insert(start, wholeToBytes(static_cast<std::int64_t>(written.size() - start)));
    }
    template <typename Structure>
    requires std::is_class_v<Structure>
    void put(const Structure& structure) { put(members(structure)); }

private:
    std::string written;
};

class RecordReader
{
public:
    explicit RecordReader(std::string_view bytes) : left(bytes) {}

    [[nodiscard]] bool isAtEnd() const { return left.empty(); }

    template <Whole Value>
    void take(Value& value)
    {
        value = static_cast<Value>(takeWhole());
    }
    void take(double& value) { value = std::bit_cast<double>(takeWhole()); }
    void take(Moment& moment) { moment = Moment(std::chrono::seconds(takeWhole())); }
    void take(std::chrono::seconds& seconds) { seconds = std::chrono::seconds(takeWhole()); }
    void take(std::string& text) { text = takeBytes(takeCount()); }
    template <typename Value>
    void take(std::optional<Value>& value)
    {
        bool isThere = false;
        take(isThere);
        value.reset();
        if (isThere) {
            take(value.emplace());
        }
    }
    template <typename Value, std::size_t size>
    void take(std::array<Value, size>& values)
    {
        for (Value& value : values) {
            take(value);
        }
    }
    template <typename Value>
    void take(std::vector<Value>& values)
    {
        values.clear();
        for (std::size_t missing = takeCount(); missing > 0; --missing) {
            take(values.emplace_back());
        }
    }
    void take(std::vector<bool>& dots);
    template <typename Key, typename Value>
    void take(std::map<Key, Value>& values)
    {
        values.clear();
        for (std::size_t missing = takeCount(); missing > 0; --missing) {
            Key key{};
            take(key);
            take(values[key]);
        }
    }
    template <typename... Members>
    void take(const std::tuple<Members&...>& members)
    {
        RecordReader record(takeBytes(takeCount()));
        std::apply([&record](auto&... member) { (record.takeIfThere(member), ...); }, members);
    }
    template <typename Structure>
    requires std::is_class_v<Structure>
    void take(Structure& structure) { take(members(structure)); }

private:
    template <typename Member>
    void takeIfThere(Member& member)
    {
        if (!isAtEnd()) {
            take(member);
        }
    }
    std::int64_t takeWhole();
    // Of bytes or of values, each of which has one byte at least: never more than are left.
    std::size_t takeCount();
    std::string_view takeBytes(std::size_t count);

    std::string_view left;
};

template <typename Value>
std::string toBytes(const Value& value)
{
    RecordWriter writer;
    writer.put(value);
    return writer.bytes();
}

template <typename Value>
Value fromBytes(std::string_view bytes)
{
    Value value;
    RecordReader(bytes).take(value);
    return value;
}

} // namespace virtual_printer
