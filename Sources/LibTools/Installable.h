// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

/// The root of the installable services.
class I_AutoFree
{
public:
    I_AutoFree() = default;
    I_AutoFree(const I_AutoFree&) = delete;
    I_AutoFree& operator=(const I_AutoFree&) = delete;
    virtual ~I_AutoFree() = default;
};

/// The locator of a service T: it owns the one instance of the process. Main thread only.
template <typename T>
class T_Installable : public I_AutoFree
{
public:
    /// Replaces the current instance, which is deleted.
    static void Install(std::unique_ptr<T> instance) { Current() = std::move(instance); }
    static void Uninstall() { Current().reset(); }
    /// May be null.
    [[nodiscard]] static T* Get() { return Current().get(); }

private:
    static std::unique_ptr<T>& Current()
    {
        static std::unique_ptr<T> current;
        return current;
    }
};
