// SPDX-License-Identifier: MIT
#include "LibTools/ZenFile.h"

#include "LibTools/StringService.h"
#include "Platform/Text.h"

#include <QTextStream>

#include <cstdarg>
#include <cwchar>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t printRoom = 16384;
constexpr long maxTextSize = 256L * 1024 * 1024;

bool DecodeUtf16(StringService& strings, std::string_view bytes, std::wstring& text)
{
    std::u16string units(bytes.size() / sizeof(char16_t), u'\0');
    std::size_t size = units.size() * sizeof(char16_t);
    if (!strings.WideToWide(bytes.data(), size, units.data(), size))
        return false;
    text = Platform::Utf16ToWide(units);
    return true;
}

bool DecodeUtf8(StringService& strings, std::string_view bytes, std::wstring& text)
{
    // No UTF-8 text has more UTF-16 units than bytes.
    std::u16string units(bytes.size(), u'\0');
    std::size_t size = units.size() * sizeof(char16_t);
    if (!strings.Utf8ToWide(bytes.data(), bytes.size(), units.data(), size))
        return false;
    units.resize(size / sizeof(char16_t));
    text = Platform::Utf16ToWide(units);
    return true;
}

} // namespace

QZenFile::QZenFile(std::FILE* openStream)
{
    stream.reset(openStream);
}

QZenFile::QZenFile(std::unique_ptr<QFile> openDevice)
    : device(std::move(openDevice))
{}

QZenFile::~QZenFile() = default;

bool QZenFile::Print(const wchar_t* format, ...)
{
    if (!stream)
        return false;
    std::vector<wchar_t> buffer(printRoom + 1);
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vswprintf(buffer.data(), buffer.size(), format, arguments);
    va_end(arguments);
    if (length < 0)
        return false;
    const std::u16string units =
        Platform::WideToUtf16({buffer.data(), static_cast<std::size_t>(length)});
    const std::size_t size = units.size() * sizeof(char16_t);
    return Write(units.data(), size) == size;
}

std::size_t QZenFile::Read(void* buffer, std::size_t size)
{
    return stream ? std::fread(buffer, 1, size, stream.get()) : 0;
}

std::size_t QZenFile::Write(const void* buffer, std::size_t size)
{
    return stream ? std::fwrite(buffer, 1, size, stream.get()) : 0;
}

bool QZenFile::PrintText(const std::wstring& text)
{
    // The text may be a user's: a stray conversion in it must not reach the formatter.
    std::wstring plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        plain += text[i];
        if (text[i] == L'%' && i + 1 < text.size() && text[i + 1] == L'%')
            ++i;
    }
    return Print(L"%ls", plain.c_str());
}

int QZenFile::Seek(long offset, int origin)
{
    return stream ? std::fseek(stream.get(), offset, origin) : -1;
}

long QZenFile::Tell()
{
    return stream ? std::ftell(stream.get()) : -1;
}

bool QZenFile::ReadDevice(std::wstring& text)
{
    if (!device || !device->isReadable() || device->size() > maxTextSize)
        return false;
    QTextStream reader(device.get());
    reader.setAutoDetectUnicode(true);
    QString joined;
    for (QString line; reader.readLineInto(&line);)
        joined += line;
    text = joined.toStdWString();
    return true;
}

bool QZenFile::ReadAll(std::wstring& text)
{
    text.clear();
    if (!stream)
        return ReadDevice(text);
    StringService* strings = StringService::global.get();
    if (!strings || Seek(0, SEEK_END) != 0)
        return false;
    const long end = Tell();
    if (end < 0 || end > maxTextSize || Seek(0, SEEK_SET) != 0)
        return false;
    std::string bytes(static_cast<std::size_t>(end), '\0');
    if (Read(bytes.data(), bytes.size()) != bytes.size())
        return false;
    const std::string_view all = bytes;
    if (all.empty() || all.starts_with("\xFE\xFF"))
        return true;
    if (all.starts_with("\xFF\xFE"))
        return DecodeUtf16(*strings, all.substr(2), text);
    return DecodeUtf8(*strings, all, text);
}
