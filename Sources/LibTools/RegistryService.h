// SPDX-License-Identifier: MIT
#pragma once

#include "LibTools/Installable.h"

#include <string>
#include <utility>

/// Named texts under a key of the user's. A key is a path with `\` or `/` between its parts.
class RegistryService : public T_Installable<RegistryService>
{
public:
    explicit RegistryService(std::wstring root)
        : rootKey(std::move(root))
    {}

    virtual void WriteString(const std::wstring& name, const std::wstring& value) = 0;
    /// An empty `subKey` means the root key. False, with `value` as it was, when there is none of
    /// this name and for one of 1000 UTF-16 units or more.
    virtual bool ReadString(const std::wstring& name, std::wstring& value,
                            const std::wstring& subKey = {}) = 0;
    /// False when there is no such value.
    virtual bool DeleteValue(const std::wstring& name) = 0;

protected:
    std::wstring rootKey;
};
