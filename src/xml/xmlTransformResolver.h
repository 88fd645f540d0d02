#pragma once

#include "transform/referenceOp.h"
#include "transform/transform.h"
#include "utils/preferences.h"

#include <set>
#include <string>

namespace Color {

/// Gives the references of a transform the ops that they stand for, those of references in referenced files included.
class XMLTransformResolver
{
public:
    /// The preferences must outlive the resolver.
    explicit XMLTransformResolver(const Preferences& preferences) : m_preferences(preferences) {}

    /// Does nothing when no reference of the transform is unresolved. Throws 0x3040002 when a file refers to itself,
    /// straight or by others, 0x3040003 when one cannot be read or is one of too many, and what getFullPath() throws;
    /// references before the one that fails are then resolved.
    /// \param filePath the file that holds the transform, empty when there is none
    void resolve(const std::string& filePath, ResolveFlags flags, Transform& transform) const;

    /// Where the file lies that a reference names. Stores in the reference the alias that the flags select.
    /// Throws 0x3040004 when reference is null, 0x1020001 for an unknown alias, and 0x3040001 for a relative path
    /// without a base.
    /// \param filePath the file that holds the reference
    std::string getFullPath(const std::string& filePath, ResolveFlags flags, ReferenceOp* reference) const;

    /// How many references are followed from one transform. Few files that refer to each other could otherwise stand
    /// for more ops than any machine has room for.
    static constexpr std::size_t kMaxReferences = 4096;

private:
    struct Progress
    {
        std::set<std::string> paths; ///< the files that are being resolved, each referred to by another of them
        std::size_t references = 0;  ///< that were followed so far
    };

    void resolve(const std::string& filePath, ResolveFlags flags, Transform& transform, Progress& progress) const;
    std::string getBaseDirectory(const std::string& filePath, BasePath basePath) const;

    const Preferences& m_preferences;
};

} // namespace Color
