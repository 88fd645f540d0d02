#pragma once

#include <cstdlib>
#include <optional>
#include <string>

/// Sets a variable of the environment, or removes it for null, and restores it on destruction.
class ScopedVariable
{
public:
    ScopedVariable(const char* name, const char* value) : m_name(name)
    {
        if (const char* former = std::getenv(name)) m_former = former;
        set(value);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable() { set(m_former ? m_former->c_str() : nullptr); }

private:
    void set(const char* value) const
    {
        if (value) {
            ::setenv(m_name.c_str(), value, 1);
        } else {
            ::unsetenv(m_name.c_str());
        }
    }

    std::string m_name;
    std::optional<std::string> m_former;
};
