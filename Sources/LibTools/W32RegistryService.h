// SPDX-License-Identifier: MIT
#pragma once

#include "LibTools/RegistryService.h"

#include <QSettings>

/// The keys are groups of one ini file in the user's configuration folder.
class W32RegistryService final : public RegistryService
{
public:
    explicit W32RegistryService(std::wstring root);

    void WriteString(const std::wstring& name, const std::wstring& value) override;
    bool ReadString(const std::wstring& name, std::wstring& value,
                    const std::wstring& subKey = {}) override;
    bool DeleteValue(const std::wstring& name) override;

private:
    QSettings store_;
};
