#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Color {

/// How far a profile keeps to the rules of its format, from the best to the worst.
enum class ICCProfileStatus : int
{
    Compliant = 0,
    Warning = 1,      ///< nobody is misled
    NonCompliant = 2, ///< against the rules, but what is meant can be read
    CriticalError = 3 ///< what is meant cannot be told
};

struct ICCProfileCheck
{
    ICCProfileStatus status = ICCProfileStatus::Compliant;
    /// What is wrong and where, the worst first; empty for a compliant profile.
    std::string report;
};

/// Larger profiles are not read. Those of displays have some kilobytes.
constexpr std::size_t kICCMaximumSize = std::size_t{16} << 20;

/// Checks the header and the tag table of a profile; what the tags hold is not looked at.
ICCProfileCheck checkICCProfile(std::string_view bytes);

} // namespace Color
