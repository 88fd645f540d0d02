// Keeps transforms in the library's cache, and the cache in a file from one run to the next: cache FILE
#include <morvane/morvane.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

static bool check(const Morvane::MorvaneStatus& status, const char* task)
{
    if (!status) std::fprintf(stderr, "cache: cannot %s: %s\n", task, status.getErrorMessage());
    return status;
}

struct Document : Morvane::TransformWriterCallback
{
    void write(const char* bytes, unsigned length) override { text.append(bytes, length); }
    std::string text;
};

struct CacheText : Morvane::TransformCache::Writer
{
    void write(const char* bytes, uint32_t length) override { text.append(bytes, length); }
    std::string text;
};

// A transform comes into the cache as the text of a set of one. The id must not have a quotation mark.
static bool addToCache(const std::string& id, const Morvane::TransformPtr& transform)
{
    Document document;
    if (!check(Morvane::saveColorTransformToBuffer(document, transform), "write the transform")) return false;
    const std::string set = "<ProcessListSet>\n<ProcessListEntry>\n<TransformId id=\"" + id + "\"/>\n" + document.text +
                            "</ProcessListEntry>\n</ProcessListSet>\n";
    return check(Morvane::TransformCache::populateTransformCache(set.c_str()), "add the transform");
}

// One stop brighter.
static Morvane::MorvaneStatus makeBrighter(Morvane::TransformPtr& result)
{
    const float matrix[9] = {2, 0, 0, 0, 2, 0, 0, 0, 2};
    const float offsets[3] = {0, 0, 0};
    return Morvane::CreateMatrixTransform(Morvane::BIT_DEPTH_32f, Morvane::BIT_DEPTH_32f, matrix, offsets, false,
                                          result);
}

// Another format may take another object: the result is what to apply.
static bool finalizeFor(const Morvane::TransformPtr& transform, Morvane::PixelFormat format,
                        Morvane::TransformPtr& result)
{
    return check(Morvane::finalize(transform, format, Morvane::PF_RGBA_32f, Morvane::RENDERER_CPU,
                                   Morvane::OPTIMIZER_DEFAULT, Morvane::RESOLVE_BROADCAST_MONITOR, result),
                 "finalize the transform");
}

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: cache FILE\n");
        return 2;
    }
    std::ifstream file(argv[1], std::ios::binary);
    const std::string former{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    file.close();
    if (!former.empty() && !check(Morvane::TransformCache::populateTransformCache(former.c_str()), "read the file")) {
        return 1;
    }
    std::printf("%u from the file\n", Morvane::TransformCache::numItems());

    Morvane::TransformPtr transform;
    if (!Morvane::TransformCache::getTransform("brighter", transform)) {
        if (!check(makeBrighter(transform), "make the transform") || !addToCache("brighter", transform) ||
            !check(Morvane::TransformCache::getTransform("brighter", transform), "find the transform")) {
            return 1;
        }
    }

    // The first form is the transform itself, the other a clone that is made once.
    Morvane::TransformPtr bytes, words, wordsAgain;
    if (!finalizeFor(transform, Morvane::PF_RGB_8i, bytes) || !finalizeFor(transform, Morvane::PF_RGB_16i, words) ||
        !finalizeFor(transform, Morvane::PF_RGB_16i, wordsAgain)) {
        return 1;
    }
    std::printf("two forms: %s, the second made once: %s\n", bytes.get() != words.get() ? "yes" : "no",
                words.get() == wordsAgain.get() ? "yes" : "no");

    CacheText cache;
    if (!check(Morvane::TransformCache::serializeTransformCache(cache), "write the cache")) return 1;
    std::ofstream(argv[1], std::ios::binary) << cache.text;
    std::printf("%u to the file\n", Morvane::TransformCache::numItems());
}
