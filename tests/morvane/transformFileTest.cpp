#include "morvane/transformFile.h"

#include "tests/utils/failure.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Morvane_2015_1_42;

namespace {

/// Throws when it is told of a certain extension.
template <class Thrower>
class StoppingList : public SupportedExtensionsCallBack
{
public:
    StoppingList(const char* last, Thrower thrower) : m_last(last), m_thrower(thrower) {}

    void addExtension(const char* extension, const char*) override
    {
        m_extensions.emplace_back(extension);
        if (m_extensions.back() == m_last) m_thrower();
    }

    const std::vector<std::string>& extensions() const { return m_extensions; }

private:
    std::string m_last;
    Thrower m_thrower;
    std::vector<std::string> m_extensions;
};

const std::vector<std::string> kFirstThree = {"ctf", "cdl", "ccc"};

} // namespace

TEST(getSupportedFileExtensions, endsWithTheFailureThatTheCallbackRaises)
{
    StoppingList list("ccc", [] {
        Color::raise(Color::LogCategory::XML_IO_READER, Color::ErrorIds::FILE_FORMAT_UNSUPPORTED, "ccc");
    });
    MorvaneStatus status = getSupportedFileExtensions(list);
    EXPECT_FALSE(status);
    EXPECT_EQ(status.getErrorCode(), 0x3060001u);
    EXPECT_STREQ(status.getErrorMessage(), "Unsupported file format: 'ccc'");
    EXPECT_EQ(list.extensions(), kFirstThree);
}

TEST(getSupportedFileExtensions, whatElseTheCallbackThrowsComesThrough)
{
    StoppingList list("ccc", [] { throw std::runtime_error("enough"); });
    EXPECT_THROW(getSupportedFileExtensions(list), std::runtime_error);
    EXPECT_EQ(list.extensions(), kFirstThree);
}
