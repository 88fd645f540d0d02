#include "morvane/transformCacheText.h"

#include "tests/morvane/cachedTransform.h"
#include "tests/utils/failure.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>

using namespace Morvane_2015_1_42;
using Impl::readCacheText;
using Impl::TransformStore;
using Impl::writeCacheText;

namespace {

const Failure kInvalid = {0x6040002, "COLOR:MORVANE:CACHE", "Invalid data provided to populate the cache"};

/// The document of a transform of the id "<id>" that multiplies by 2, without its declaration.
const std::string kDocument = "<ProcessList version=\"1.3\" id=\"<id>\">\n"
                              "   <Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                              "      <Array dim=\"3 3 3\">\n"
                              "              2               0               0\n"
                              "              0               2               0\n"
                              "              0               0               2\n"
                              "      </Array>\n"
                              "   </Matrix>\n"
                              "</ProcessList>\n";
const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

std::string replaced(std::string text, const std::string& part, const std::string& replacement)
{
    text.replace(text.find(part), part.size(), replacement);
    return text;
}

std::string documentOf(const std::string& id) { return replaced(kDocument, "<id>", id); }

std::string entryOf(const std::string& id, const std::string& document)
{
    return "<ProcessListEntry>\n<TransformId id=\"" + id + "\"/>\n" + document + "</ProcessListEntry>\n";
}

std::string entryOf(const std::string& id) { return entryOf(id, kDeclaration + documentOf(id)); }

std::string setOf(const std::string& entries) { return "<ProcessListSet>\n" + entries + "</ProcessListSet>\n"; }

std::string textOf(const TransformStore& store)
{
    std::ostringstream stream;
    writeCacheText(store, stream);
    return stream.str();
}

Failure failureOfReading(const std::string& text, TransformStore& store)
{
    return failureOf([&] { readCacheText(text, store); });
}

/// The ids of what a text brings into an empty store, failing as told.
std::vector<std::string> idsIn(const std::string& text, const Failure& failure)
{
    TransformStore store;
    EXPECT_EQ(failureOfReading(text, store), failure) << text;
    return idsOf(store);
}

using Ids = std::vector<std::string>;

} // namespace

TEST(transformCacheText, ofAnEmptyStoreIsAnEmptySet)
{
    TransformStore store;
    EXPECT_EQ(textOf(store), "<ProcessListSet>\n</ProcessListSet>\n");
    store.add(makeTransform("a"));
    EXPECT_EQ(failureOfReading("<ProcessListSet>\n</ProcessListSet>\n", store), kNoFailure);
    EXPECT_EQ(idsOf(store), Ids{"a"});
}

TEST(transformCacheText, holdsIdAndDocumentOfEachEntryInOrder)
{
    TransformStore store;
    store.add(makeTransform("z"));
    store.add(makeTransform("a"));
    EXPECT_EQ(textOf(store), setOf(entryOf("z") + entryOf("a")));
}

TEST(transformCacheText, holdsNoFinalizedForms)
{
    TransformStore store;
    const TransformPtr transform = makeTransform("a");
    store.add(transform);
    const TransformPtr form = transform->clone();
    ASSERT_TRUE(Impl::Transform::of(form)->finalize(PF_RGBA_8i, PF_RGBA_8i, RENDERER_CPU, OPTIMIZER_OFF,
                                                    RESOLVE_GRAPHICS_MONITOR));
    store.addForm(form, {PF_RGBA_8i, PF_RGBA_8i, RENDERER_CPU, OPTIMIZER_OFF, RESOLVE_GRAPHICS_MONITOR});
    EXPECT_EQ(textOf(store), setOf(entryOf("a")));
}

TEST(transformCacheText, isReadAgainAsItWasWritten)
{
    TransformStore store;
    // Only in the attribute of the document are these escaped.
    for (const char* id : {"z", "a<b>&'c", "with blanks", "\xc3\xa4", "</ProcessListSet>", "a"})
        store.add(makeTransform(id, 3.f));
    const std::string text = textOf(store);
    EXPECT_NE(text.find("<TransformId id=\"a<b>&'c\"/>\n"), std::string::npos);
    EXPECT_NE(text.find("id=\"a&lt;b&gt;&amp;&apos;c\">\n"), std::string::npos);

    TransformStore again;
    EXPECT_EQ(failureOfReading(text, again), kNoFailure);
    EXPECT_EQ(idsOf(again), idsOf(store));
    EXPECT_EQ(textOf(again), text);
    for (const TransformStore::Item& item : again.getItems()) {
        EXPECT_EQ(item.transform->getId(), item.id);
        TransformPtr original;
        ASSERT_TRUE(store.find(item.id, original));
        EXPECT_TRUE(Impl::Transform::modelOf(item.transform)->isEqual(*Impl::Transform::modelOf(original)));
    }
}

TEST(transformCacheText, givesATransformTheIdOfItsEntry)
{
    TransformStore store;
    EXPECT_EQ(failureOfReading(setOf(entryOf("entry-1", documentOf("document-1"))), store), kNoFailure);
    TransformPtr transform;
    ASSERT_TRUE(store.find("entry-1", transform));
    EXPECT_STREQ(transform->getId(), "entry-1");
    EXPECT_STREQ(transform->getUniqueId(), "document1");
    EXPECT_FALSE(store.find("document-1", transform));
    EXPECT_TRUE(store.holds(*Impl::Transform::of(transform)));
}

TEST(transformCacheText, ofAStoreIsRefusedByThatStoreAtTheFirstEntry)
{
    TransformStore store;
    store.add(makeTransform("a"));
    store.add(makeTransform("b"));
    EXPECT_EQ(failureOfReading(textOf(store), store),
              (Failure{0x6040003, "COLOR:MORVANE:CACHE", "Transform in cache data already exists in active cache: a"}));
    EXPECT_EQ(idsOf(store), (Ids{"a", "b"}));
}

TEST(transformCacheText, entriesBeforeAFailureStay)
{
    const Failure duplicate = {0x6040003, "COLOR:MORVANE:CACHE",
                               "Transform in cache data already exists in active cache: a"};
    EXPECT_EQ(idsIn(setOf(entryOf("a") + entryOf("b") + entryOf("a") + entryOf("c")), duplicate), (Ids{"a", "b"}));
    const std::string noMatrix = entryOf("b", replaced(documentOf("b"), "2 ", "? "));
    EXPECT_EQ(idsIn(setOf(entryOf("a") + noMatrix + entryOf("c")),
                    {0x302000e, "COLOR:XML:READER",
                     "Illegal values '?               0               0' in 'Matrix' line 0: File name not specified"}),
              Ids{"a"});
}

TEST(transformCacheText, anIdEndsAtItsFirstQuotationMark)
{
    TransformStore store;
    store.add(makeTransform("one\"two"));
    EXPECT_EQ(idsIn(textOf(store), kNoFailure), Ids{"one"});
    EXPECT_EQ(
        idsIn(setOf(entryOf("", documentOf("a"))), {0x2010010, "COLOR:TRANSFORM:ALL", "Transform ID cannot be empty"}),
        Ids{});
}

TEST(transformCacheText, everyMarkIsNeeded)
{
    const std::string text = setOf(entryOf("a"));
    for (const char* mark : {"<ProcessListSet>\n", "</ProcessListSet>\n", "<ProcessListEntry>\n", "<TransformId id=\"",
                             "<ProcessList version=", "</ProcessList>\n"}) {
        EXPECT_EQ(idsIn(replaced(text, mark, ""), kInvalid), Ids{}) << mark;
    }
    EXPECT_EQ(idsIn(replaced(text, "</ProcessListEntry>\n", ""), kInvalid), Ids{"a"});
    EXPECT_EQ(idsIn("", kInvalid), Ids{});
    EXPECT_EQ(idsIn("<ProcessListSet>\n<ProcessListEntry>\n<TransformId id=\"a</ProcessListSet>\n", kInvalid), Ids{});
}

TEST(transformCacheText, aCarriageReturnBeforeALineFeedBreaksAMark)
{
    const std::string text = setOf(entryOf("a"));
    for (const char* mark : {"<ProcessListSet>", "</ProcessListSet>", "<ProcessListEntry>", "</ProcessList>"})
        EXPECT_EQ(idsIn(replaced(text, std::string(mark) + "\n", std::string(mark) + "\r\n"), kInvalid), Ids{}) << mark;
    EXPECT_EQ(idsIn(replaced(text, "</ProcessListEntry>\n", "</ProcessListEntry>\r\n"), kInvalid), Ids{"a"});
    // Neither is this mark with its line feed, nor what is passed over.
    EXPECT_EQ(idsIn(replaced(text, "\"/>\n", "\"/>\r\n"), kNoFailure), Ids{"a"});
}

TEST(transformCacheText, marksMustBeInOrder)
{
    EXPECT_EQ(idsIn("</ProcessListSet>\n<ProcessListSet>\n" + entryOf("a"), kInvalid), Ids{});
    const std::string idBehindDocument =
        "<ProcessListEntry>\n" + documentOf("a") + "<TransformId id=\"a\"/>\n</ProcessListEntry>\n";
    EXPECT_EQ(idsIn(setOf(idBehindDocument), kInvalid), Ids{});
    // The document of the second entry is the first one behind the id of the first.
    EXPECT_EQ(idsIn(setOf(entryOf("a", "") + entryOf("b")), kNoFailure), Ids{"a"});
}

TEST(transformCacheText, whatStandsAroundTheMarksIsPassedOver)
{
    const std::string entry = "<ProcessListEntry>\nx<TransformId id=\"a\" other=\"b\"/>\n<!-- y -->" + documentOf("a") +
                              "z</ProcessListEntry>\n";
    EXPECT_EQ(idsIn("x<ProcessListSet>\ny" + entry + "</ProcessListSet>\nz", kNoFailure), Ids{"a"});
    // But not before the end of the set.
    EXPECT_EQ(idsIn(setOf(entryOf("a") + " "), kInvalid), Ids{"a"});
    EXPECT_EQ(idsIn(setOf(" "), kInvalid), Ids{});
}

TEST(transformCacheText, behindTheEndOfTheSetNothingIsReadUnlessAnEntryReachesBeyondIt)
{
    EXPECT_EQ(idsIn(setOf("") + setOf(entryOf("a")), kNoFailure), Ids{});
    EXPECT_EQ(idsIn(setOf(entryOf("a")) + setOf(entryOf("b")), kNoFailure), Ids{"a"});
    // The end of an entry is looked for wherever it is, and so are more entries then.
    const std::string overlapping =
        replaced(setOf(entryOf("a")), "</ProcessListEntry>\n", "") + "</ProcessListEntry>\n";
    EXPECT_EQ(idsIn(overlapping, kNoFailure), Ids{"a"});
    EXPECT_EQ(idsIn(overlapping + entryOf("b"), kNoFailure), (Ids{"a", "b"}));
    EXPECT_EQ(idsIn(overlapping + "<ProcessListEntry>\n", kInvalid), Ids{"a"});
}

TEST(transformCacheText, aDescriptionCannotEndItsDocument)
{
    TransformStore store;
    const TransformPtr transform = makeTransform("a");
    const char* description = "</ProcessList>\n</ProcessListEntry>\n</ProcessListSet>\n<ProcessListEntry>\nx";
    transform->setDescription(description);
    store.add(transform);
    TransformStore again;
    EXPECT_EQ(failureOfReading(textOf(store), again), kNoFailure);
    ASSERT_EQ(idsOf(again), Ids{"a"});
    EXPECT_STREQ(again.getItems()[0].transform->getDescription(), description);
    // In a text by another hand, the first of these ends it all the same.
    const std::string raw =
        replaced(documentOf("a"), "   <Matrix", "<Description><![CDATA[</ProcessList>\n]]></Description><Matrix");
    EXPECT_FALSE(failureOfReading(setOf(entryOf("b", raw)), again) == kNoFailure);
    EXPECT_EQ(idsOf(again), Ids{"a"});
}

TEST(transformCacheText, mayHoldDocumentsThatTheWriterWouldSpellOtherwise)
{
    // Without a declaration, of an older version, without operators.
    TransformStore store;
    const std::string empty = "<ProcessList version=\"1.2\" id=\"a\"></ProcessList>\n";
    EXPECT_EQ(failureOfReading(setOf(entryOf("a", empty)), store), kNoFailure);
    EXPECT_EQ(textOf(store),
              setOf(entryOf("a", kDeclaration + "<ProcessList version=\"1.3\" id=\"a\">\n</ProcessList>\n")));
}

TEST(transformCacheText, ofATransformThatIsNotValidIsRefused)
{
    TransformStore store;
    store.add(makeTransform("a"));
    const TransformPtr broken = makeTransform("b");
    Impl::Transform::modelOf(broken)->getOpList().append(new Color::MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_UNKNOWN));
    store.add(broken);
    EXPECT_EQ(failureOf([&] { textOf(store); }),
              (Failure{0x3010002, "COLOR:XML:ALL", "Transform invalid: ''OutBitDepth' attribute missing in Matrix'"}));
    EXPECT_EQ(idsOf(store), (Ids{"a", "b"}));
}

// Damage.

namespace {

std::string threeEntries()
{
    std::string entries;
    for (const char* id : {"one", "two", "three"})
        entries += entryOf(id, "<ProcessList version=\"1.3\" id=\"x\">\n<Description>y</Description></ProcessList>\n");
    return setOf(entries);
}

} // namespace

TEST(transformCacheText, cutAnywhereIsRefusedAndKeepsTheWholeTransformsBeforeTheCut)
{
    const std::string text = threeEntries();
    for (std::size_t length = 0; length < text.size(); ++length) {
        SCOPED_TRACE(length);
        const std::string cut = text.substr(0, length);
        EXPECT_EQ(idsIn(cut, kInvalid), Ids{});

        // Nothing is read without the end of the set. With it, entries are read as far as they go.
        const auto endsWith = [&](const std::string& mark) {
            return length >= mark.size() && cut.compare(length - mark.size(), mark.size(), mark) == 0;
        };
        const bool isSound = endsWith("<ProcessListSet>\n") || endsWith("</ProcessListEntry>\n");
        const std::string documentEnd = "</ProcessList>\n";
        std::size_t documents = 0;
        for (std::size_t end = 0; (end = cut.find(documentEnd, end)) != std::string::npos; ++end)
            ++documents;
        const Ids three = {"one", "two", "three"};
        EXPECT_EQ(idsIn(cut + "</ProcessListSet>\n", isSound ? kNoFailure : kInvalid),
                  Ids(three.begin(), three.begin() + static_cast<std::ptrdiff_t>(documents)));
    }
}

namespace {

/// A damaged text of the entries one, two and three is read or refused. At most the id that the damage is in is
/// another one, and what was read can be written and read again.
void expectReadOrRefused(const std::string& text)
{
    TransformStore store;
    EXPECT_FALSE(failureOfReading(text, store).message.empty() && store.size() == 0);
    const Ids ids = idsOf(store);
    EXPECT_LE(ids.size(), 3u);
    EXPECT_LE(std::count_if(ids.begin(), ids.end(),
                            [](const std::string& id) { return id != "one" && id != "two" && id != "three"; }),
              1);
    TransformStore again;
    EXPECT_EQ(failureOfReading(textOf(store), again), kNoFailure);
    EXPECT_EQ(idsOf(again), ids);
}

} // namespace

TEST(transformCacheText, withAnyByteReplacedIsReadOrRefused)
{
    const std::string text = threeEntries();
    for (std::size_t i = 0; i < text.size(); ++i) {
        for (const char byte : {'<', '"', '\n', '>', '~'}) {
            SCOPED_TRACE(i);
            std::string damaged = text;
            damaged[i] = byte;
            expectReadOrRefused(damaged);
        }
    }
}

TEST(transformCacheText, withAnyByteLeftOutIsReadOrRefused)
{
    const std::string text = threeEntries();
    for (std::size_t i = 0; i < text.size(); ++i) {
        SCOPED_TRACE(i);
        expectReadOrRefused(std::string(text).erase(i, 1));
    }
}
