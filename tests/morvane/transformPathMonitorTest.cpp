#include "morvane/transformPathMonitor.h"

#include "tests/xml/temporaryDirectory.h"
#include "utils/exception.h"

#include <gtest/gtest.h>
#include <vector>

using namespace Morvane_2015_1_42;

namespace {

/// Refuses the second name.
class RefusingCallback : public TransformPathMonitor::Callback
{
public:
    void onEntry(const char* name) override
    {
        m_names.emplace_back(name);
        if (m_names.size() == 2) Color::raise(Color::LogCategory::XML_READER, Color::ErrorIds::FILE_NOT_FOUND, name);
    }

    const std::vector<std::string>& getNames() const { return m_names; }

private:
    std::vector<std::string> m_names;
};

} // namespace

TEST(TransformPathMonitor, failureOfTheCallbackEndsTheWalkAndIsTheStatus)
{
    const TemporaryDirectory root;
    for (const char* name : {"a.ctf", "b.ctf", "c.ctf", "d/x", "e/x", "f/x"})
        root.write(name);
    TransformPathMonitor monitor(root.getPath("").c_str());

    RefusingCallback files;
    MorvaneStatus status = monitor.listFiles("", files);
    EXPECT_EQ(status.getErrorCode(), 0x3060003U);
    EXPECT_STREQ(status.getErrorMessage(), "No file found: 'b.ctf'");
    EXPECT_EQ(files.getNames(), (std::vector<std::string>{"a.ctf", "b.ctf"}));

    RefusingCallback directories;
    status = monitor.listDirectories("", directories);
    EXPECT_EQ(status.getErrorCode(), 0x3060003U);
    EXPECT_STREQ(status.getErrorMessage(), "No file found: 'e'");
    EXPECT_EQ(directories.getNames(), (std::vector<std::string>{"d", "e"}));
}
