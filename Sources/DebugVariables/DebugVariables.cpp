// SPDX-License-Identifier: MIT
#include "DebugVariables/DebugVariables.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "Log/Log.h"

namespace Zen {

namespace {

std::mutex globalMutex;
std::shared_ptr<DebugVariables> globalVariables;

float FloatOf(std::uint32_t bits)
{
    return std::bit_cast<float>(bits);
}

const char* TypeName(DebugVariables::Type type)
{
    switch (type) {
    case DebugVariables::Type::Int:
        return "int";
    case DebugVariables::Type::Float:
        return "float";
    case DebugVariables::Type::Bool:
        return "bool";
    case DebugVariables::Type::Duration:
        return "duration";
    case DebugVariables::Type::None:
        break;
    }
    return "null";
}

std::string ValueText(const DebugVariables::Value& value)
{
    switch (value.type) {
    case DebugVariables::Type::Int:
    case DebugVariables::Type::Duration:
        return std::to_string(value.AsInt());
    case DebugVariables::Type::Float: {
        // As printf's %f, with a point in every locale.
        std::array<char, 64> text{};
        const auto result = std::to_chars(text.data(), text.data() + text.size(), value.AsFloat(),
                                          std::chars_format::fixed, 6);
        return {text.data(), result.ptr};
    }
    case DebugVariables::Type::Bool:
        return value.AsBool() ? "true" : "false";
    case DebugVariables::Type::None:
        break;
    }
    return "null";
}

DebugVariables::Value Unpack(std::uint64_t word)
{
    return {static_cast<std::uint32_t>(word), static_cast<DebugVariables::Type>(word >> 32 & 0xFF)};
}

} // namespace

bool DebugVariables::Value::AsBool() const
{
    switch (type) {
    case Type::None:
        return false;
    case Type::Float:
        return !(FloatOf(bits) == 0.0F);
    default:
        return bits != 0;
    }
}

std::int32_t DebugVariables::Value::AsInt() const
{
    if (type == Type::None)
        return 0;
    if (type == Type::Float) {
        constexpr float limit = 2147483648.0F;
        const float value = FloatOf(bits);
        return value >= -limit && value < limit ? static_cast<std::int32_t>(value) : 0;
    }
    return static_cast<std::int32_t>(bits);
}

float DebugVariables::Value::AsFloat() const
{
    return type == Type::Float ? FloatOf(bits) : static_cast<float>(AsInt());
}

void DebugVariables::Set(std::string_view name, std::int32_t value)
{
    Store(name, static_cast<std::uint32_t>(value), Type::Int);
}

void DebugVariables::Set(std::string_view name, float value)
{
    Store(name, std::bit_cast<std::uint32_t>(value), Type::Float);
}

void DebugVariables::Set(std::string_view name, bool value)
{
    Store(name, value ? 1 : 0, Type::Bool);
}

void DebugVariables::Set(std::string_view name, Duration value)
{
    Store(name, static_cast<std::uint32_t>(value.count), Type::Duration);
}

void DebugVariables::Store(std::string_view name, std::uint32_t bits, Type type)
{
    if (Slot* slot = Claim(name))
        slot->word = std::uint64_t{bits} | std::uint64_t{static_cast<std::uint8_t>(type)} << 32;
}

DebugVariables::Slot* DebugVariables::Claim(std::string_view name)
{
    const std::uint32_t key = Hash(name);
    if (key == 0)
        return nullptr;
    for (std::size_t i = key % SlotCount;; i = (i + 1) % SlotCount) {
        std::uint32_t found = slots_[i].key;
        if (found == key)
            return &slots_[i];
        if (found != 0)
            continue;
        // The last free slot stays free, so that a search always ends.
        const std::lock_guard lock(mutex);
        if (used_ + 1 >= SlotCount)
            return nullptr;
        if (slots_[i].key.compare_exchange_strong(found, key)) {
            ++used_;
            std::copy_n(name.begin(), std::min(name.size(), NameLength), names[i].begin());
            return &slots_[i];
        }
        if (found == key)
            return &slots_[i];
    }
}

DebugVariables::Value DebugVariables::Get(std::uint32_t key) const
{
    for (std::size_t i = key % SlotCount;; i = (i + 1) % SlotCount) {
        const std::uint32_t found = slots_[i].key;
        if (found == 0)
            return {};
        if (found == key)
            return Unpack(slots_[i].word);
    }
}

DebugVariables::Tagged DebugVariables::Get(std::string_view name) const
{
    const Value value = Get(Hash(name));
    switch (value.type) {
    case Type::None:
        return std::int32_t{0};
    case Type::Int:
        return value.AsInt();
    case Type::Float:
        return value.AsFloat();
    case Type::Bool:
        return value.AsBool();
    case Type::Duration:
        return Duration{value.AsInt()};
    }
    ZEN_LOG_ERROR("Variable \"%.*s\" has unkown type %d", static_cast<int>(name.size()),
                  name.data(), static_cast<int>(value.type));
    return std::int32_t{0};
}

std::string_view DebugVariables::NameOf(std::size_t slot) const
{
    return {names[slot].data(), strnlen(names[slot].data(), NameLength)};
}

void DebugVariables::ListNames(std::vector<std::string>& list) const
{
    const std::lock_guard lock(mutex);
    for (std::size_t i = 0; i < SlotCount; ++i) {
        if (!NameOf(i).empty())
            list.emplace_back(NameOf(i));
    }
}

template <typename Format>
std::size_t DebugVariables::Dump(std::span<char> out, Format format) const
{
    const std::lock_guard lock(mutex);
    if (out.size() < 2)
        return 0;
    std::size_t end = 0;
    out[end++] = '{';
    for (std::size_t i = 0; i < SlotCount; ++i) {
        if (NameOf(i).empty())
            continue;
        const std::string item =
            '"' + std::string(NameOf(i)) + "\":" + format(Unpack(slots_[i].word)) + ',';
        if (item.size() > out.size() - end) {
            // "}" is written where the item would have begun, or over the last comma of a full
            // span.
            end += end == out.size() ? 0 : 1;
            out[end - 1] = '}';
            return end;
        }
        std::copy(item.begin(), item.end(), out.begin() + static_cast<std::ptrdiff_t>(end));
        end += item.size();
    }
    if (end == 1)
        return 0;
    out[end - 1] = '}';
    return end;
}

std::size_t DebugVariables::DumpTypes(std::span<char> out) const
{
    return Dump(out, [](const Value& value) { return std::string(TypeName(value.type)); });
}

std::size_t DebugVariables::DumpValues(std::span<char> out) const
{
    return Dump(out, ValueText);
}

std::shared_ptr<DebugVariables> DebugVariables::Global()
{
    const std::lock_guard lock(globalMutex);
    return globalVariables;
}

void DebugVariables::SetGlobal(std::shared_ptr<DebugVariables> variables)
{
    const std::lock_guard lock(globalMutex);
    globalVariables.swap(variables);
}

} // namespace Zen
