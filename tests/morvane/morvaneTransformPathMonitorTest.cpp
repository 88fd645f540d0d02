#include "morvane/morvaneTransformPathMonitor.h"

#include "tests/utils/failure.h"
#include "tests/xml/temporaryDirectory.h"

#include <gtest/gtest.h>

using Morvane_2015_1_42::Impl::MorvaneTransformPathMonitor;

namespace {

using Names = std::vector<std::string>;

class MorvaneTransformPathMonitorTest : public testing::Test
{
protected:
    Names getFiles(const std::string& relative) { return m_monitor.getContent(relative)->files; }

    TemporaryDirectory m_root;
    MorvaneTransformPathMonitor m_monitor{m_root.getPath("transforms")};
};

} // namespace

TEST_F(MorvaneTransformPathMonitorTest, emptyTextIsTheRoot)
{
    m_root.write("transforms/a.ctf");
    EXPECT_EQ(getFiles(""), Names{"a.ctf"});
}

TEST_F(MorvaneTransformPathMonitorTest, relativePathsStartAtTheRoot)
{
    m_root.write("transforms/looks/night/a.ctf");
    m_root.write("transforms/looks/b.ctf");
    EXPECT_EQ(getFiles("looks/night"), Names{"a.ctf"});
    EXPECT_EQ(getFiles("/looks"), Names{"b.ctf"});
    EXPECT_EQ(getFiles("looks/night/.."), Names{"b.ctf"});
}

TEST_F(MorvaneTransformPathMonitorTest, keepsAListingForEachRelativePath)
{
    m_root.write("transforms/looks/a.ctf");
    m_root.write("transforms/b.ctf");
    const auto root = m_monitor.getContent("");
    const auto looks = m_monitor.getContent("looks");
    EXPECT_EQ(m_monitor.getContent(""), root);
    EXPECT_EQ(m_monitor.getContent("looks"), looks);
}

TEST_F(MorvaneTransformPathMonitorTest, settingThePathForgetsAllListings)
{
    m_root.write("transforms/a.ctf");
    const auto content = m_monitor.getContent("");
    m_monitor.setPath(m_monitor.getPath());
    EXPECT_NE(m_monitor.getContent(""), content);
    EXPECT_EQ(getFiles(""), Names{"a.ctf"});
}

TEST_F(MorvaneTransformPathMonitorTest, failuresNameTheFullPath)
{
    const std::string path = m_root.getPath("transforms/looks");
    EXPECT_EQ(failureOf([&] { m_monitor.getContent("looks"); }),
              (Failure{0x6020001, "COLOR:MORVANE:PATH", "Path not found: '" + path + "'"}));
    m_root.write("transforms/looks/a.ctf");
    EXPECT_EQ(getFiles("looks"), Names{"a.ctf"});
}

TEST_F(MorvaneTransformPathMonitorTest, joinsThePathOfAFile)
{
    MorvaneTransformPathMonitor monitor("/site");
    EXPECT_EQ(monitor.getFileFullPath("looks/night", "a b.ctf"), "/site/looks/night/a b.ctf");
    EXPECT_EQ(monitor.getFileFullPath("", "a.ctf"), "/site/a.ctf");
    EXPECT_EQ(monitor.getFileFullPath("looks/", "a.ctf"), "/site/looks/a.ctf");
    EXPECT_EQ(monitor.getFileFullPath("/looks", "/a.ctf"), "/site/looks/a.ctf");
    monitor.setPath("");
    EXPECT_EQ(monitor.getFileFullPath("looks", "a.ctf"), "looks/a.ctf");
    EXPECT_EQ(monitor.getFileFullPath("", ""), "");
}

TEST_F(MorvaneTransformPathMonitorTest, copyKeepsItsListings)
{
    m_root.write("transforms/a.ctf");
    const auto content = m_monitor.getContent("");
    MorvaneTransformPathMonitor copy = m_monitor;
    m_monitor.setPath("elsewhere");
    EXPECT_EQ(copy.getPath(), m_root.getPath("transforms"));
    EXPECT_EQ(copy.getContent(""), content);
}
