#pragma once

#include "morvane/export.h"
#include "morvane/status.h"
#include "morvane/transform.h"

#include <cstdint>

namespace Morvane_2015_1_42 {

/// The store of transforms of this process. A host that keeps its transforms here reads each of them once, and
/// finalizes it once for each set of values: finalize() takes what an entry holds already. The whole store goes from
/// one run to the next as one text.
///
/// An entry has the id that its transform had when it came into the store. It holds that transform and, in the order in
/// which finalize() made them, clones that are finalized for other values. Entries stand in the order in which they
/// were added.
///
/// Any number of threads may call these functions at once. What they give out are the objects of the store, no copies,
/// and each has the rules of Transform. finalize() only reads a transform of the store that is finalized already, and
/// compares all those of its entry: finalize it once, before several threads share it, and do not set its formats or
/// its adaptor while one of them may finalize. Transforms with references to aliases are for the thread that uses the
/// preferences.
class MORVANE_API TransformCache
{
public:
    /// Receives the text of the store block by block.
    class MORVANE_API Writer
    {
    public:
        Writer();
        Writer(const Writer& other);
        Writer& operator=(const Writer& other);
        virtual ~Writer();
        /// Called with one block after the other, of whatever sizes. The bytes are not terminated and valid during the
        /// call only. The store is locked for other threads meanwhile. An exception thrown here ends the writing; it
        /// passes through to the host, and no more calls follow. The store stays as it is.
        virtual void write(const char* bytes, uint32_t length) = 0;
    };

    TransformCache() = delete;

    /// Forgets all entries. Handles that a host has stay valid.
    static MorvaneStatus clear();

    /// The number of entries; finalized forms do not count.
    static unsigned numItems();

    /// The transform of an entry as it was added; result is another handle to it. Fails with 0x6030001 when id is null,
    /// and 0x6040001 when there is no such entry.
    static MorvaneStatus getTransform(const char* id, TransformPtr& result);

    /// Adds the entries of a text that serializeTransformCache() wrote, which is only read. Every byte counts: a text
    /// whose line ends were changed is refused.
    ///
    /// Fails with 0x6030001 when text is null, 0x6040002 when it is no such text, 0x6040003 at an entry whose id is in
    /// the store already, and with what is wrong in the document of a transform. The entries before stay.
    static MorvaneStatus populateTransformCache(const char* text);

    /// Writes all entries as a text, with their transforms as they were added; finalized forms are made again when they
    /// are asked for. An id with a quotation mark is written as it is and read back up to that mark. Fails with
    /// 0x3010002 when a transform is not valid, after the entries before it.
    static MorvaneStatus serializeTransformCache(Writer& writer);
};

} // namespace Morvane_2015_1_42
