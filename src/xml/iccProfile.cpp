#include "xml/iccProfile.h"

#include <new>

namespace Color {

namespace {

/// Keeps the first complaint, in the text that the context has as its user data.
void keepError(cmsContext context, cmsUInt32Number, const char* text) noexcept
{
    auto& error = *static_cast<std::string*>(cmsGetContextUserData(context));
    try {
        if (error.empty() && text) error = text;
    } catch (const std::bad_alloc&) {
        // Nothing may be thrown through a library in C; the refusal stands without its reason.
        error.clear();
    }
}

} // namespace

ICCProfile::ICCProfile(std::string_view bytes) : m_context(cmsCreateContext(nullptr, &m_error))
{
    if (!m_context) throw std::bad_alloc();
    cmsSetLogErrorHandlerTHR(m_context.get(), keepError);
    m_profile.reset(
        cmsOpenProfileFromMemTHR(m_context.get(), bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
}

uint32_t ICCProfile::getConnectionSpace() const { return cmsGetPCS(m_profile.get()); }

uint32_t ICCProfile::getDeviceSpace() const { return cmsGetColorSpace(m_profile.get()); }

bool ICCProfile::hasTag(uint32_t signature) const
{
    return cmsIsTag(m_profile.get(), static_cast<cmsTagSignature>(signature)) != 0;
}

std::string ICCProfile::readTag(uint32_t signature) const
{
    const auto tag = static_cast<cmsTagSignature>(signature);
    std::string bytes(cmsReadRawTag(m_profile.get(), tag, nullptr, 0), '\0');
    const auto size = static_cast<cmsUInt32Number>(bytes.size());
    bytes.resize(size > 0 ? cmsReadRawTag(m_profile.get(), tag, bytes.data(), size) : 0);
    return bytes;
}

} // namespace Color
