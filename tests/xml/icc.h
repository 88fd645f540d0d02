#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// ICC profiles put together byte by byte.
namespace Icc {

inline std::string u16(unsigned value)
{
    return {static_cast<char>(value >> 8 & 0xff), static_cast<char>(value & 0xff)};
}

inline std::string u32(uint32_t value) { return u16(value >> 16) + u16(value & 0xffff); }

/// The data of a tag: its type, four reserved bytes, what follows.
inline std::string data(const std::string& type, const std::string& content) { return type + u32(0) + content; }

/// One triple of s15.16 numbers.
inline std::string xyz(int32_t x, int32_t y, int32_t z)
{
    return data("XYZ ", u32(static_cast<uint32_t>(x)) + u32(static_cast<uint32_t>(y)) + u32(static_cast<uint32_t>(z)));
}

inline std::string curve(const std::vector<unsigned>& values)
{
    std::string content = u32(static_cast<uint32_t>(values.size()));
    for (const unsigned value : values)
        content += u16(value);
    return data("curv", content);
}

struct Profile
{
    std::string version = u32(0x02400000);
    std::string profileClass = "mntr";
    std::string deviceSpace = "RGB ";
    std::string connectionSpace = "XYZ ";
    std::vector<std::pair<std::string, std::string>> tags; ///< signature and data

    /// The tag that is there already, else a new one.
    std::string& operator[](const std::string& signature)
    {
        for (auto& [present, tagData] : tags) {
            if (present == signature) return tagData;
        }
        return tags.emplace_back(signature, "").second;
    }

    void erase(const std::string& signature)
    {
        for (auto tag = tags.begin(); tag != tags.end(); ++tag) {
            if (tag->first != signature) continue;
            tags.erase(tag);
            return;
        }
    }

    std::string bytes() const
    {
        std::string table = u32(static_cast<uint32_t>(tags.size()));
        std::string content;
        for (const auto& [signature, tagData] : tags) {
            const std::size_t offset = 132 + 12 * tags.size() + content.size();
            table += signature + u32(static_cast<uint32_t>(offset)) + u32(static_cast<uint32_t>(tagData.size()));
            content += tagData;
            content.resize((content.size() + 3) / 4 * 4);
        }
        std::string header = u32(static_cast<uint32_t>(128 + table.size() + content.size())) + "test";
        header += version + profileClass + deviceSpace + connectionSpace;
        header += std::string(12, '\0') + "acsp";
        header.resize(128);
        return header + table + content;
    }
};

/// A display with the colorants of sRGB as its profile publishes them, and the same curve for all channels.
inline Profile display(const std::vector<unsigned>& toneCurve)
{
    Profile profile;
    profile["rXYZ"] = xyz(0x6fa2, 0x38f5, 0x0390);
    profile["gXYZ"] = xyz(0x6299, 0xb785, 0x18da);
    profile["bXYZ"] = xyz(0x24a0, 0x0f84, 0xb6cf);
    for (const char* signature : {"rTRC", "gTRC", "bTRC"})
        profile[signature] = curve(toneCurve);
    return profile;
}

/// The bytes with a big-endian number written over them.
inline std::string withU32(std::string bytes, std::size_t at, uint32_t value)
{
    return bytes.replace(at, 4, u32(value));
}

} // namespace Icc
