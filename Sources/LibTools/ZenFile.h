// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

#include <QFile>

/// An open file. All calls but ReadAll work on the C stream and do nothing without one.
class ZenFile
{
public:
    ZenFile() = default;
    ZenFile(const ZenFile&) = delete;
    ZenFile& operator=(const ZenFile&) = delete;
    virtual ~ZenFile() = default;

    /// Formats like wprintf (at most 16384 characters) and writes the characters as UTF-16 without
    /// a terminator. False when the text can't be formatted, is longer, or can't be written whole.
    virtual bool Print(const wchar_t* format, ...) = 0;
    /// Bytes read or written.
    virtual std::size_t Read(void* buffer, std::size_t size) = 0;
    virtual std::size_t Write(const void* buffer, std::size_t size) = 0;
    /// Prints the text as a format without arguments: "%%" is written as one percent sign. Any
    /// other percent sign is printed as it is.
    virtual bool PrintText(const std::wstring& text) = 0;
    /// As fseek and ftell: 0 is success, -1 a failure.
    virtual int Seek(long offset, int origin) = 0;
    virtual long Tell() = 0;
    /// The whole text. After the mark FF FE it is UTF-16, after FE FF it is given as empty,
    /// without a mark it is UTF-8. A Qt device is read line by line, and the lines are joined
    /// without anything between them. False for a short read and for more than 256 MB.
    virtual bool ReadAll(std::wstring& text) = 0;

protected:
    struct CloseStream
    {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, CloseStream> stream;
};

/// A file of SysFileSystem: on a C stream or on a QFile, which also reaches the Qt resources.
class QZenFile final : public ZenFile
{
public:
    /// Takes over a stream that fopen gave.
    explicit QZenFile(std::FILE* openStream);
    explicit QZenFile(std::unique_ptr<QFile> openDevice);
    ~QZenFile() override;

    bool Print(const wchar_t* format, ...) override;
    std::size_t Read(void* buffer, std::size_t size) override;
    std::size_t Write(const void* buffer, std::size_t size) override;
    bool PrintText(const std::wstring& text) override;
    int Seek(long offset, int origin) override;
    long Tell() override;
    bool ReadAll(std::wstring& text) override;

private:
    std::unique_ptr<QFile> device;

    bool ReadDevice(std::wstring& text);
};
