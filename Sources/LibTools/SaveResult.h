// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <system_error>

/// What became of a save: true when the file is on the disk, whole.
class [[nodiscard]] SaveResult
{
public:
    SaveResult() = default;
    SaveResult(const std::error_code& failure) // NOLINT(google-explicit-constructor)
        : failure_(failure)
    {}

    explicit operator bool() const { return !failure_; }
    /// Why the file was not written, as a sentence for the operator; empty when it was.
    [[nodiscard]] QString Reason() const;

private:
    std::error_code failure_;
};
