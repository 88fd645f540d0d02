#include "xml/iccProfileCheck.h"

#include "xml/iccBytes.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

namespace Color {

namespace {

// Places and sizes are those of ISO 15076-1, "Profile format": the header, then the tag table.
constexpr std::size_t kSizeAt = 0;
constexpr std::size_t kVersionAt = 8;
constexpr std::size_t kClassAt = 12;
constexpr std::size_t kSignatureAt = 36;
constexpr std::size_t kTagCountAt = 128;
constexpr std::size_t kTagTableAt = 132;
constexpr std::size_t kTagEntrySize = 12; ///< signature, offset and size
constexpr uint32_t kSmallestTag = 8;      ///< the type and four reserved bytes

constexpr unsigned kNewestVersion = 4;

constexpr uint32_t kClasses[] = {iccSignature("scnr"), iccSignature("mntr"), iccSignature("prtr"), iccSignature("link"),
                                 iccSignature("spac"), iccSignature("abst"), iccSignature("nmcl")};

/// Collects what is found. A table of a million bad tags must not become a million texts.
class Findings
{
public:
    void warn(const std::string& text) { add(ICCProfileStatus::Warning, text); }
    void addNonCompliant(const std::string& text) { add(ICCProfileStatus::NonCompliant, text); }
    void addCritical(const std::string& text) { add(ICCProfileStatus::CriticalError, text); }

    ICCProfileCheck getCheck() const
    {
        ICCProfileCheck check;
        std::size_t shown = 0;
        for (int level = 3; level > 0; --level) {
            const std::vector<std::string>& texts = m_texts[static_cast<std::size_t>(level)];
            if (texts.empty()) continue;
            check.status = std::max(check.status, static_cast<ICCProfileStatus>(level));
            for (std::size_t i = 0; i < texts.size() && shown < kShown; ++i, ++shown) {
                if (shown > 0) check.report += "; ";
                if (i == 0) check.report += std::string(kLevelNames[level]) + ": ";
                check.report += texts[i];
            }
        }
        if (m_count > shown) check.report += "; and " + std::to_string(m_count - shown) + " more";
        return check;
    }

private:
    static constexpr std::size_t kShown = 4;
    static constexpr const char* kLevelNames[] = {"compliant", "warning", "non-compliant", "critical"};

    void add(ICCProfileStatus status, const std::string& text)
    {
        std::vector<std::string>& texts = m_texts[static_cast<std::size_t>(status)];
        if (texts.size() < kShown) texts.push_back(text);
        ++m_count;
    }

    std::array<std::vector<std::string>, 4> m_texts; ///< by level, in the order of the profile
    std::size_t m_count = 0;
};

std::string quoted(uint32_t signature) { return "'" + iccSignatureText(signature) + "'"; }

/// False when the header tells nothing that can be relied on.
bool checkSize(std::string_view bytes, Findings& findings)
{
    if (bytes.size() > kICCMaximumSize) {
        findings.addCritical("the profile has more than " + std::to_string(kICCMaximumSize) + " bytes");
        return false;
    }
    if (bytes.size() < kTagTableAt) {
        findings.addCritical("the profile ends after " + std::to_string(bytes.size()) + " bytes, within its header");
        return false;
    }
    const uint32_t signature = bigEndian32(bytes, kSignatureAt);
    if (signature != iccSignature("acsp")) {
        findings.addCritical("the signature at byte 36 is " + quoted(signature) + " and not 'acsp'");
        return false;
    }
    const uint32_t size = bigEndian32(bytes, kSizeAt);
    if (size > bytes.size()) {
        findings.addCritical("the profile ends after " + std::to_string(bytes.size()) + " of the " +
                             std::to_string(size) + " bytes that its header tells");
    } else if (size < bytes.size()) {
        findings.warn("the file goes on behind the " + std::to_string(size) + " bytes of the profile");
    }
    return true;
}

void checkHeader(std::string_view bytes, Findings& findings)
{
    const unsigned version = static_cast<unsigned char>(bytes[kVersionAt]);
    if (version > kNewestVersion) {
        findings.addCritical("version " + std::to_string(version) + " is newer than " + std::to_string(kNewestVersion));
    } else if (version != 2 && version != 4) {
        findings.addNonCompliant("there is no version " + std::to_string(version));
    }
    const uint32_t profileClass = bigEndian32(bytes, kClassAt);
    if (profileClass == 0) {
        findings.addNonCompliant("the profile tells no class");
    } else if (std::find(std::begin(kClasses), std::end(kClasses), profileClass) == std::end(kClasses)) {
        findings.addCritical("there is no profile class " + quoted(profileClass));
    }
}

void checkTags(std::string_view bytes, Findings& findings)
{
    const uint64_t profileSize = std::min<uint64_t>(bigEndian32(bytes, kSizeAt), bytes.size());
    const uint64_t count = bigEndian32(bytes, kTagCountAt);
    const uint64_t tagsAt = kTagTableAt + count * kTagEntrySize;
    if (count == 0) findings.addNonCompliant("the profile has no tags");
    if (tagsAt > profileSize) {
        findings.addCritical("the profile has " + std::to_string(profileSize) + " bytes, too few for a table of " +
                             std::to_string(count) + " tags");
        return;
    }
    std::set<uint32_t> signatures;
    for (std::size_t entryAt = kTagTableAt; entryAt < tagsAt; entryAt += kTagEntrySize) {
        const uint32_t signature = bigEndian32(bytes, entryAt);
        const uint64_t offset = bigEndian32(bytes, entryAt + 4);
        const uint64_t size = bigEndian32(bytes, entryAt + 8);
        const std::string name = "tag " + quoted(signature);
        const std::string place = name + " of " + std::to_string(size) + " bytes at byte " + std::to_string(offset);
        if (!signatures.insert(signature).second) findings.addCritical("there are two tags " + quoted(signature));
        if (size < kSmallestTag) findings.addCritical(place + " has no room for its type");
        if (offset < tagsAt) findings.addCritical(place + " begins within the header or the tag table");
        if (offset + size > profileSize)
            findings.addCritical(place + " ends behind the " + std::to_string(profileSize) + " bytes of the profile");
        if (offset % 4 != 0) findings.warn(name + " begins at byte " + std::to_string(offset) + ", no multiple of 4");
    }
}

} // namespace

ICCProfileCheck checkICCProfile(std::string_view bytes)
{
    Findings findings;
    if (checkSize(bytes, findings)) {
        checkHeader(bytes, findings);
        checkTags(bytes, findings);
    }
    return findings.getCheck();
}

} // namespace Color
