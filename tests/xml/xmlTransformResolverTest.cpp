#include "xml/xmlTransformResolver.h"

#include "tests/utils/childProcess.h"
#include "tests/utils/scopedVariable.h"
#include "tests/xml/ctf.h"
#include "tests/xml/temporaryDirectory.h"
#include "utils/paths.h"
#include "xml/fileIOManager.h"

#include <algorithm>

using namespace Color;

namespace {

const char* const kCategory = "COLOR:XML:RESOLVER";
const char* const kSystemVariable = "MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION";
const char* const kSharedVariable = "MORVANE_OVERRIDE_SHARED_PATH";

std::string reference(const std::string& attributes) { return Ctf::op("Reference", "", attributes) + "\n"; }

std::string referenceTo(const std::string& path) { return reference(" path='" + path + "'"); }

std::string namedMatrix(const std::string& name)
{
    return Ctf::matrix("<Array dim='3 3 3'>1 0 0 0 1 0 0 0 1</Array>", " name='" + name + "'") + "\n";
}

/// The names of the ops of a transform, with those of a resolved reference in brackets.
std::string outlineOf(const OpList& ops)
{
    std::string outline;
    for (std::size_t i = 0; i < ops.size(); ++i) {
        if (i > 0) outline += ' ';
        const OpList* referenced = ops.get(i)->getReferencedOps();
        outline += referenced ? "[" + outlineOf(*referenced) + "]" : ops.get(i)->getDisplayName();
    }
    return outline;
}

/// Resolves with preferences that name the directory of the test as the shared one.
class XMLTransformResolverTest : public testing::Test
{
protected:
    XMLTransformResolverTest() { m_preferences.setSharedHome(m_directory.getPath("shared")); }

    std::string write(const std::string& name, const std::string& body)
    {
        return m_directory.write(name, Ctf::document(body));
    }

    std::string resolve(const ColorTransformPtr& transform, ResolveFlags flags = RESOLVE_BROADCAST_MONITOR)
    {
        XMLTransformResolver(m_preferences).resolve("", flags, *transform);
        return outlineOf(transform->getOpList());
    }

    std::string resolve(const std::string& body, ResolveFlags flags = RESOLVE_BROADCAST_MONITOR)
    {
        return resolve(Ctf::read(Ctf::document(body)), flags);
    }

    Failure failureOfResolving(const std::string& body)
    {
        const auto transform = Ctf::read(Ctf::document(body));
        return failureOf([&] { resolve(transform); });
    }

    /// The full path of a reference in a file.
    std::string getFullPath(const std::string& filePath, const std::string& path, BasePath basePath)
    {
        ReferenceOp op;
        op.setPath(path, basePath);
        return XMLTransformResolver(m_preferences).getFullPath(filePath, RESOLVE_BROADCAST_MONITOR, &op);
    }

    const ScopedVariable m_noSharedVariable{kSharedVariable, nullptr};
    const TemporaryDirectory m_directory;
    Preferences m_preferences{"2015.1.42"};
};

} // namespace

TEST_F(XMLTransformResolverTest, givesAReferenceTheOpsOfTheFile)
{
    const std::string file = write("a.ctf", namedMatrix("x") + namedMatrix("y"));
    const auto transform = Ctf::read(Ctf::document(namedMatrix("before") + referenceTo(file) + namedMatrix("after")));
    EXPECT_TRUE(transform->hasUnresolved());
    EXPECT_EQ(resolve(transform), "before [x y] after");
    EXPECT_FALSE(transform->hasUnresolved());
    EXPECT_EQ(Ctf::getOp<ReferenceOp>(transform, 1).getResolvedPath(), file);
    EXPECT_EQ(outlineOf(transform->clone(CloneMode::Flatten)->getOpList()), "before x y after");
}

TEST_F(XMLTransformResolverTest, readsEveryFormat)
{
    const std::string file = m_directory.write("a.cc", "<ColorCorrection id='warm'><SatNode>\n<Saturation>0.5"
                                                       "</Saturation>\n</SatNode></ColorCorrection>");
    const auto transform = Ctf::read(Ctf::document(referenceTo(file)));
    resolve(transform);
    EXPECT_EQ(Ctf::getOp<ReferenceOp>(transform).getOpList().get(0)->getOpType(), OP_CDL);
}

TEST_F(XMLTransformResolverTest, resolvesTheReferencesOfReferencedFiles)
{
    const std::string c = write("c.ctf", namedMatrix("c"));
    const std::string b = write("b.ctf", namedMatrix("b") + referenceTo(c));
    const std::string a = write("a.ctf", referenceTo(b) + namedMatrix("a"));
    EXPECT_EQ(resolve(referenceTo(a)), "[[b [c]] a]");
}

TEST_F(XMLTransformResolverTest, fitsTheOpsToTheDepthsOfTheReference)
{
    const std::string file = write("a.ctf", namedMatrix("x"));
    const auto transform =
        Ctf::read(Ctf::document("<Reference inBitDepth='8i' outBitDepth='10i' path='" + file + "'/>"));
    resolve(transform);
    const Op& op = *Ctf::getOp<ReferenceOp>(transform).getOpList().get(0);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_10i);
}

TEST_F(XMLTransformResolverTest, bypassesTheOpsOfABypassedReferenceAtEveryDepth)
{
    const std::string b = write("b.ctf", namedMatrix("b"));
    const std::string a = write("a.ctf", namedMatrix("a") + referenceTo(b));
    const auto transform = Ctf::read(Ctf::document(namedMatrix("x") + reference(" bypass='true' path='" + a + "'")));
    EXPECT_EQ(resolve(transform), "x [a [b]]");
    const OpList& ops = Ctf::getOp<ReferenceOp>(transform, 1).getOpList();
    EXPECT_TRUE(ops.get(0)->getBypass()->get());
    EXPECT_TRUE(ops.get(1)->getReferencedOps()->get(0)->getBypass()->get());
    EXPECT_EQ(outlineOf(transform->clone(CloneMode::Flatten)->getOpList()), "x");
}

TEST_F(XMLTransformResolverTest, aDynamicBypassOfAReferenceSwitchesItsOpsAtEveryDepth)
{
    const std::string b = write("b.ctf", namedMatrix("b"));
    const std::string a = write("a.ctf", namedMatrix("a") + referenceTo(b));
    const auto transform = Ctf::read(Ctf::document(
        Ctf::op("Reference", "<DynamicParameter param='LOOK_SWITCH'/>\n", " bypass='true' path='" + a + "'")));
    EXPECT_EQ(resolve(transform), "[a [b]]");
    const auto flat = transform->clone(CloneMode::Flatten);
    ASSERT_EQ(outlineOf(flat->getOpList()), "a b") << "they may be switched on";
    for (const bool isBypassed : {true, false, true}) {
        DynamicProperty property(DynamicProperty::BYPASS);
        property.setValue(isBypassed ? 1 : 0);
        transform->setDynamicProperty(property);
        for (std::size_t i = 0; i < 2; ++i)
            EXPECT_EQ(flat->getOpList().get(i)->getBypass()->get(), isBypassed) << i;
    }
}

TEST_F(XMLTransformResolverTest, aliasesAreLookedUp)
{
    m_preferences.setAlias("absolute", write("a.ctf", namedMatrix("a")), BASE_PATH_NONE);
    write("shared/looks/b.ctf", namedMatrix("b"));
    m_preferences.setAlias("relative", "looks/b.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(resolve(reference(" alias='absolute'") + reference(" alias='relative'")), "[a] [b]");
}

TEST_F(XMLTransformResolverTest, theFlagsChooseTheMonitor)
{
    m_preferences.setAlias("graphicsMonitor", write("g.ctf", namedMatrix("graphics")), BASE_PATH_NONE);
    m_preferences.setAlias("broadcastMonitor", write("b.ctf", namedMatrix("broadcast")), BASE_PATH_NONE);
    m_preferences.setAlias("currentMonitor", write("c.ctf", namedMatrix("current")), BASE_PATH_NONE);
    const std::string body = reference(" alias='currentMonitor'");
    EXPECT_EQ(resolve(body, RESOLVE_GRAPHICS_MONITOR), "[graphics]");
    EXPECT_EQ(resolve(body, RESOLVE_BROADCAST_MONITOR), "[broadcast]");
    EXPECT_EQ(resolve(body, static_cast<ResolveFlags>(2)), "[current]");
    // In a file that a reference leads to as well.
    const std::string file = write("a.ctf", body);
    EXPECT_EQ(resolve(referenceTo(file), RESOLVE_GRAPHICS_MONITOR), "[[graphics]]");
}

TEST_F(XMLTransformResolverTest, anUnknownAliasFails)
{
    EXPECT_EQ(failureOfResolving(reference(" alias='nobody'")),
              (Failure{0x1020001, "COLOR:UTILS:PREFERENCES", "Alias 'nobody' not found."}));
}

TEST_F(XMLTransformResolverTest, aFileThatRefersToItselfFails)
{
    const std::string file = m_directory.getPath("a.ctf");
    write("a.ctf", namedMatrix("a") + referenceTo(file));
    EXPECT_EQ(failureOfResolving(referenceTo(file)),
              (Failure{0x3040002, kCategory, "Reference cycle detected: '" + file + "'"}));
}

TEST_F(XMLTransformResolverTest, filesThatReferToEachOtherFail)
{
    const std::string a = m_directory.getPath("a.ctf");
    const std::string b = write("b.ctf", reference(" alias='a'"));
    m_preferences.setAlias("a", a, BASE_PATH_NONE);
    write("a.ctf", referenceTo(b));
    EXPECT_EQ(failureOfResolving(referenceTo(b)),
              (Failure{0x3040002, kCategory, "Reference cycle detected: '" + b + "'"}));
    EXPECT_EQ(failureOfResolving(reference(" alias='a'")),
              (Failure{0x3040002, kCategory, "Reference cycle detected: '" + a + "'"}));
}

TEST_F(XMLTransformResolverTest, aFileMayBeReferredToMoreThanOnce)
{
    const std::string d = write("d.ctf", namedMatrix("d"));
    EXPECT_EQ(resolve(referenceTo(d) + referenceTo(d)), "[d] [d]");
    const std::string b = write("b.ctf", referenceTo(d));
    const std::string c = write("c.ctf", referenceTo(d));
    EXPECT_EQ(resolve(referenceTo(b) + referenceTo(c) + referenceTo(d)), "[[d]] [[d]] [d]");
}

TEST_F(XMLTransformResolverTest, aFileThatCannotBeReadFails)
{
    const std::string missing = m_directory.getPath("missing.ctf");
    EXPECT_EQ(failureOfResolving(reference(" name='look' path='" + missing + "'")),
              (Failure{0x3040003, kCategory,
                       "Failed to load reference look: " + failureOf([&] { FileIOManager::load(missing); }).message}));
    const std::string broken = m_directory.write("broken.ctf", "<ProcessList");
    const Failure failure = failureOfResolving(referenceTo(broken));
    EXPECT_EQ(failure.id, 0x3040003u);
    EXPECT_EQ(failure.message.rfind("Failed to load reference Reference: ", 0), 0u) << failure;
}

TEST_F(XMLTransformResolverTest, aFailureBelowNamesTheReferenceThatFails)
{
    const std::string b = write("b.ctf", reference(" name='inner' path='/no/such/file.ctf'"));
    const Failure failure = failureOfResolving(reference(" name='outer' path='" + b + "'"));
    EXPECT_EQ(failure.id, 0x3040003u);
    EXPECT_EQ(failure.message.rfind("Failed to load reference inner: ", 0), 0u) << failure;
}

TEST_F(XMLTransformResolverTest, whatFailedMayBeResolvedLater)
{
    const std::string a = write("a.ctf", namedMatrix("a"));
    const auto transform = Ctf::read(Ctf::document(referenceTo(a) + reference(" alias='later'") + referenceTo(a)));
    EXPECT_EQ(failureOf([&] { resolve(transform); }).id, 0x1020001u);
    EXPECT_TRUE(transform->hasUnresolvedReference());
    m_preferences.setAlias("later", m_directory.getPath("later.ctf"), BASE_PATH_NONE);
    EXPECT_EQ(failureOf([&] { resolve(transform); }).id, 0x3040003u);
    EXPECT_TRUE(transform->hasUnresolvedReference());
    write("later.ctf", namedMatrix("b"));
    EXPECT_EQ(resolve(transform), "[a] [b] [a]");
}

TEST_F(XMLTransformResolverTest, doesNothingWithoutAnUnresolvedReference)
{
    EXPECT_EQ(resolve(namedMatrix("a")), "a");
    const std::string file = write("a.ctf", namedMatrix("x"));
    const auto transform = Ctf::read(Ctf::document(referenceTo(file)));
    resolve(transform);
    write("a.ctf", namedMatrix("y"));
    EXPECT_EQ(resolve(transform), "[x]");
    transform->unresolve();
    EXPECT_EQ(resolve(transform), "[y]");
}

TEST_F(XMLTransformResolverTest, readsAllReferencesAgainWhenOneIsUnresolved)
{
    const std::string file = write("a.ctf", namedMatrix("x"));
    const auto transform = Ctf::read(Ctf::document(referenceTo(file)));
    resolve(transform);
    write("a.ctf", namedMatrix("y"));
    auto* added = new ReferenceOp;
    added->setPath(file, BASE_PATH_NONE);
    transform->getOpList().append(added);
    EXPECT_EQ(resolve(transform), "[y] [y]");
}

TEST_F(XMLTransformResolverTest, aReferenceThatIsNoneFails)
{
    EXPECT_EQ(
        failureOf([&] { XMLTransformResolver(m_preferences).getFullPath("", RESOLVE_GRAPHICS_MONITOR, nullptr); }),
        (Failure{0x3040004, kCategory, "Internal - Reference is null"}));
}

TEST_F(XMLTransformResolverTest, anAbsolutePathNeedsNoBaseAndIgnoresIt)
{
    for (const BasePath basePath : {BASE_PATH_NONE, BASE_PATH_BRELWICK, BASE_PATH_SHARED, BasePath(7)})
        EXPECT_EQ(getFullPath("/f/a.ctf", "/x/../b.ctf", basePath), "/x/../b.ctf");
}

TEST_F(XMLTransformResolverTest, aRelativePathNeedsABase)
{
    EXPECT_EQ(failureOf([&] { getFullPath("/f/a.ctf", "b.ctf", BASE_PATH_NONE); }),
              (Failure{0x3040001, kCategory, "Reference missing Base Path attribute"}));
}

TEST_F(XMLTransformResolverTest, theSharedBaseIsThatOfThePreferences)
{
    EXPECT_EQ(getFullPath("/f/a.ctf", "looks/b.ctf", BASE_PATH_SHARED), m_directory.getPath("shared/looks/b.ctf"));
    const ScopedVariable variable(kSharedVariable, "/override");
    EXPECT_EQ(getFullPath("/f/a.ctf", "b.ctf", BASE_PATH_SHARED), "/override/b.ctf");
}

TEST_F(XMLTransformResolverTest, anUnknownBaseIsNoDirectory)
{
    EXPECT_EQ(getFullPath("/f/a.ctf", "looks/b.ctf", BasePath(7)), "looks/b.ctf");
}

TEST_F(XMLTransformResolverTest, theBaseOfAFileInAnInstalledTreeIsThatTree)
{
    const std::string tree = "/moved/Brelwick/Tandrel/Morvane/2014.2/transforms/";
    EXPECT_EQ(getFullPath(tree + "display/a.ctf", "misc/b.ctf", BASE_PATH_BRELWICK), tree + "misc/b.ctf");
    EXPECT_EQ(getFullPath(tree + "a/transforms/c.ctf", "b.ctf", BASE_PATH_BRELWICK), tree + "b.ctf");
    const std::string deep = "/transforms/Brelwick/Tandrel/Morvane/20xx/x/y/transforms/";
    EXPECT_EQ(getFullPath(deep + "c.ctf", "b.ctf", BASE_PATH_BRELWICK), deep + "b.ctf");
}

TEST_F(XMLTransformResolverTest, theBaseOfOtherFilesIsTheSystemTree)
{
    ChildProcess process([this] {
        const ScopedVariable none(kSystemVariable, nullptr);
        configurePaths("/home", "/home/config.xml", "/shared");
        for (const char* file :
             {"", "/f/a.ctf", "/transforms/Brelwick/Tandrel/Morvane/2015/a.ctf",
              "/x/Brelwick/Tandrel/Morvane/19/transforms/a.ctf", "/x/brelwick/Tandrel/Morvane/2015/transforms/a.ctf",
              "/x/Brelwick/Tandrel/Morvane/2015/transforms"}) {
            EXPECT_EQ(getFullPath(file, "misc/b.ctf", BASE_PATH_BRELWICK), "/home/transforms/misc/b.ctf") << file;
        }
    });
    EXPECT_TRUE(process.succeeds());
}

TEST_F(XMLTransformResolverTest, aReferencedFileIsTheBaseOfItsOwnReferences)
{
    const std::string tree = "Brelwick/Tandrel/Morvane/2099/transforms/";
    write(tree + "b.ctf", namedMatrix("b"));
    const std::string a = write(tree + "looks/a.ctf", reference(" path='b.ctf' basePath='Brelwick'"));
    EXPECT_EQ(resolve(referenceTo(a)), "[[b]]");
}

// Each file refers to the next one twice, so that each further level doubles what has to be read.
TEST_F(XMLTransformResolverTest, followsSoManyReferencesAndNoMore)
{
    std::string path = write("0.ctf", namedMatrix("m"));
    for (int level = 1; level <= 11; ++level)
        path = write(std::to_string(level) + ".ctf", referenceTo(path) + referenceTo(path));
    const std::string outline = resolve(referenceTo(path) + referenceTo(m_directory.getPath("0.ctf")));
    EXPECT_EQ(std::count(outline.begin(), outline.end(), '['), 4096); // 1 + 2 + 4 ... + 2048 of the levels, and 1
    EXPECT_EQ(failureOfResolving(referenceTo(path) + referenceTo(m_directory.getPath("0.ctf")) +
                                 reference(" name='last' path='" + path + "'")),
              (Failure{0x3040003, kCategory, "Failed to load reference last: more than 4096 references"}));
}
