// SPDX-License-Identifier: MIT
#pragma once

#include "LibTools/Installable.h"

#include <string>

/// Texts and raw resources by name, for hosts that bring their own. This program installs none.
class ZenResourcesService : public T_Installable<ZenResourcesService>
{
public:
    virtual bool GetText(const std::wstring& name, std::wstring& text) = 0;
    virtual bool GetBytes(const std::wstring& name, std::string& bytes) = 0;
};
