#pragma once

#include <cstdint>
#include <lcms2.h>
#include <memory>
#include <string>
#include <string_view>

namespace Color {

/// A profile as Little CMS sees it. Each has a context of its own, so that threads do not meet in one.
class ICCProfile
{
public:
    /// Takes a copy of the bytes.
    explicit ICCProfile(std::string_view bytes);
    // The context knows where the error is kept.
    ICCProfile(const ICCProfile&) = delete;
    ICCProfile& operator=(const ICCProfile&) = delete;

    /// False when Little CMS refuses the bytes; the other calls are not to be made then.
    bool isOpen() const { return m_profile != nullptr; }
    /// Why it refuses them.
    const std::string& getError() const { return m_error; }

    uint32_t getConnectionSpace() const;
    uint32_t getDeviceSpace() const;
    bool hasTag(uint32_t signature) const;
    /// The bytes of a tag, its type in front; empty when there is no such tag.
    std::string readTag(uint32_t signature) const;

private:
    struct Deleter
    {
        void operator()(cmsContext context) const { cmsDeleteContext(context); }
        void operator()(cmsHPROFILE profile) const { cmsCloseProfile(profile); }
    };

    std::string m_error;
    // The profile goes before its context.
    std::unique_ptr<std::remove_pointer_t<cmsContext>, Deleter> m_context;
    std::unique_ptr<std::remove_pointer_t<cmsHPROFILE>, Deleter> m_profile;
};

} // namespace Color
