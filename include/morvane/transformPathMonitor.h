#pragma once

#include "morvane/export.h"
#include "morvane/status.h"

namespace Morvane_2015_1_42 {

namespace Impl {
class MorvaneTransformPathMonitor;
}

/// The directories and transform files below a root, for a browser in a host. Nothing watches the file system: each
/// listing looks at the time of the directory's last change, and reads the directory when that is another time than the
/// one it was read at. A change in a sub-directory does not touch the listing of its parent, nor does a change of what
/// a file holds.
///
/// What a listing shows is kept for each relative path until setPath(). After a failure nothing is kept, and the next
/// listing reads anew. An object is for one thread at a time.
class MORVANE_API TransformPathMonitor
{
public:
    /// Receives the names of a listing. It may call the monitor, to list what is below a directory for example; the
    /// walk goes on through the names that it began with. An exception thrown here ends the walk and passes through to
    /// the host.
    class MORVANE_API Callback
    {
    public:
        Callback();
        Callback(const Callback& other);
        Callback& operator=(const Callback& other);
        virtual ~Callback();
        /// \param name without any directory; valid during the call only
        virtual void onEntry(const char* name) = 0;
    };

    /// \param path the root, as for setPath(); null is the empty text
    explicit TransformPathMonitor(const char* path);
    /// A copy is independent, and has what was read so far.
    TransformPathMonitor(const TransformPathMonitor& other);
    TransformPathMonitor& operator=(const TransformPathMonitor& other);
    ~TransformPathMonitor();

    /// The root. Valid until the next setPath() or assignment.
    const char* getPath() const;

    /// Sets the root and forgets all that was read. The root need not be there. Fails with 0x6020004 when path is null.
    MorvaneStatus setPath(const char* path);

    // Each listing calls the callback once for each name, in ascending order of the bytes of the names. The relative
    // path starts at the root; the empty text is the root itself. Links are followed. Fails with 0x6020004 when
    // relative is null, 0x6020001 when there is nothing at the path, 0x6020002 when it is no directory, 0x6020003 when
    // the directory cannot be read, and 0x3060004 when the file system fails otherwise. After a failure no name is
    // told.

    /// Lists the sub-directories.
    MorvaneStatus listDirectories(const char* relative, Callback& callback);

    /// Lists the files that have one of the extensions of getSupportedFileExtensions(), whatever their case.
    MorvaneStatus listFiles(const char* relative, Callback& callback);

    /// The path of a file in a directory below the root; the file need not be there. A path that does not fit is cut.
    /// Fails with 0x6020004 when a pointer is null.
    ///
    /// \param buffer receives the path with its terminating zero
    /// \param length of the buffer in bytes; for 0 nothing is written
    MorvaneStatus getFileFullPath(const char* relative, const char* fileName, char* buffer, unsigned length);

private:
    Impl::MorvaneTransformPathMonitor* m_monitor; ///< owned
};

} // namespace Morvane_2015_1_42
