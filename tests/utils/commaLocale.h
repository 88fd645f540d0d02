#pragma once

#include <clocale>
#include <locale>
#include <string>

/// While it exists the process writes one and a half as "1,5" and a million as "1.000.000": in C++ streams always, in
/// the C library where such a locale is installed.
class CommaLocale
{
public:
    CommaLocale()
        : m_formerC(std::setlocale(LC_ALL, nullptr)),
          m_formerCpp(std::locale::global(std::locale(std::locale::classic(), new Comma)))
    {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"})
            if (std::setlocale(LC_ALL, name)) break;
    }
    ~CommaLocale()
    {
        std::locale::global(m_formerCpp);
        std::setlocale(LC_ALL, m_formerC.c_str());
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    struct Comma : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::string m_formerC;
    std::locale m_formerCpp;
};
