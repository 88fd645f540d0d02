#include "xml/fileLoader.h"

#include "tests/xml/ctf.h"
#include "tests/xml/temporaryDirectory.h"

#include <boost/make_shared.hpp>
#include <stdexcept>
#include <vector>

using namespace Color;

namespace {

/// Claims one extension, and does with a file what the test tells.
class FakeReader : public IOReader
{
public:
    enum Outcome
    {
        Succeed,
        Fail,
        Break
    };

    FakeReader(const char* name, const std::string& extension, Outcome outcome, std::vector<std::string>& calls)
        : m_name(name), m_extension(extension), m_outcome(outcome), m_calls(calls)
    {}

    const char* getName() const override { return m_name; }
    void readBuffer(const char*) override { ADD_FAILURE(); }
    void readFile(const std::string& fileName) override
    {
        m_calls.push_back(m_name);
        if (m_outcome == Break) throw std::runtime_error("broken");
        if (m_outcome == Fail) raise(LogCategory::XML_READER, ErrorIds::XML_FILE_OPEN_FAILED, m_name);
        m_transform = boost::make_shared<Transform>();
        m_transform->setName(m_name + (" of " + fileName));
    }
    ColorTransformPtr getTransform() const override { return m_transform; }
    bool isFileSupported(const std::string& fileName) const override
    {
        return fileName.size() >= m_extension.size() &&
               fileName.compare(fileName.size() - m_extension.size(), std::string::npos, m_extension) == 0;
    }

private:
    const char* m_name;
    std::string m_extension;
    Outcome m_outcome;
    std::vector<std::string>& m_calls;
    ColorTransformPtr m_transform;
};

class FileLoader : public testing::Test
{
protected:
    void add(const char* name, const char* extension, FakeReader::Outcome outcome)
    {
        m_readers.push_back(std::make_unique<FakeReader>(name, extension, outcome, m_calls));
    }

    void expectFails(const std::string& path, ErrorId id, const std::string& message,
                     const std::string& category = "COLOR:XML:IO_READER")
    {
        Ctf::expectFailure(failureOf([&] { loadWith(m_readers, path); }), id, message, category);
    }

    TemporaryDirectory m_directory;
    std::string m_file = m_directory.write("a.one", "text");
    Readers m_readers;
    std::vector<std::string> m_calls;
};

} // namespace

TEST_F(FileLoader, refusesADirectory)
{
    add("A", "", FakeReader::Succeed);
    const std::string path = m_directory.getPath("x.ctf");
    m_directory.write("x.ctf/inside");
    expectFails(path, 0x3060002, "Not a file: '" + path + "'");
    EXPECT_TRUE(m_calls.empty());
}

TEST_F(FileLoader, refusesAFileThatIsNotThere)
{
    add("A", "", FakeReader::Succeed);
    const std::string path = m_directory.getPath("missing.one");
    expectFails(path, 0x3060003, "No file found: '" + path + "'");
    expectFails(m_file + "/below", 0x3060003, "No file found: '" + m_file + "/below'");
    expectFails("", 0x3060003, "No file found: ''");
}

TEST_F(FileLoader, refusesAFileThatNoReaderClaims)
{
    add("A", ".two", FakeReader::Succeed);
    expectFails(m_file, 0x3060001, "Unsupported file format: '" + m_file + "'");
    EXPECT_TRUE(m_calls.empty());
}

TEST_F(FileLoader, reportsFailuresOfTheFileSystem)
{
    const std::string path = m_directory.getPath(std::string(300, 'n') + ".one");
    std::string reason;
    try {
        boost::filesystem::status(path);
    } catch (const boost::filesystem::filesystem_error& error) {
        reason = error.what();
    }
    EXPECT_THAT(reason, testing::HasSubstr("File name too long"));
    expectFails(path, 0x3060004, "Filesystem error for '" + path + "': '" + reason);
}

TEST_F(FileLoader, onlyCandidateFailsInItsOwnWords)
{
    add("A", ".two", FakeReader::Succeed);
    add("B", ".one", FakeReader::Fail);
    expectFails(m_file, 0x3020018, "File open failed: B", "COLOR:XML:READER");
    EXPECT_EQ(m_calls, std::vector<std::string>{"B"});
}

TEST_F(FileLoader, firstSuccessEndsTheTrial)
{
    add("A", ".one", FakeReader::Fail);
    add("B", ".two", FakeReader::Succeed);
    add("C", ".one", FakeReader::Succeed);
    add("D", ".one", FakeReader::Succeed);
    EXPECT_EQ(loadWith(m_readers, m_file)->getName(), "C of " + m_file);
    EXPECT_EQ(m_calls, (std::vector<std::string>{"A", "C"}));
}

TEST_F(FileLoader, allFailuresAreToldInOrder)
{
    add("First Reader", ".one", FakeReader::Fail);
    add("Second Reader", ".one", FakeReader::Fail);
    expectFails(m_file, 0x3060005,
                "Unable to read file '" + m_file +
                    "'.\n\nFirst Reader error:\n\tFile open failed: First Reader"
                    "\n\nSecond Reader error:\n\tFile open failed: Second Reader");
}

TEST_F(FileLoader, otherFailuresPassThrough)
{
    add("A", ".one", FakeReader::Break);
    add("B", ".one", FakeReader::Succeed);
    EXPECT_THROW(loadWith(m_readers, m_file), std::runtime_error);
    EXPECT_EQ(m_calls, std::vector<std::string>{"A"});
}

TEST_F(FileLoader, readersAreMadeAfresh)
{
    const Readers first = makeReaders();
    const Readers second = makeReaders();
    ASSERT_EQ(first.size(), second.size());
    for (std::size_t i = 0; i < first.size(); ++i)
        EXPECT_NE(first[i], second[i]);
}

TEST_F(FileLoader, readersAreTriedInThisOrder)
{
    std::vector<std::string> names;
    for (const auto& reader : makeReaders())
        names.emplace_back(reader->getName());
    EXPECT_EQ(names, (std::vector<std::string>{"Morvane Transform Reader", "CDL Reader", "Halvorn LUT Reader",
                                               "Halvorn 3DL Reader", "ICC Profile Reader"}));
}
