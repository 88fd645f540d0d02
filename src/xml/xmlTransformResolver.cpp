#include "xml/xmlTransformResolver.h"

#include "utils/exception.h"
#include "utils/paths.h"
#include "xml/fileIOManager.h"

#include <boost/filesystem/path.hpp>

namespace Color {

namespace {

namespace fs = boost::filesystem;

/// The directory of transforms that an installed file lies below, empty when it lies below none: a tree of transforms
/// that refer to each other works wherever the tree is.
std::string findInstalledTransforms(const std::string& filePath)
{
    const std::string installation = "Brelwick/Tandrel/Morvane/20"; // all releases
    const std::string transforms = "/transforms/";
    const std::size_t begin = filePath.find(installation);
    if (begin == std::string::npos) return {};
    const std::size_t found = filePath.find(transforms, begin + installation.size());
    return found == std::string::npos ? std::string() : filePath.substr(0, found + transforms.size());
}

ColorTransformPtr load(const std::string& path, const ReferenceOp& reference)
{
    try {
        return FileIOManager::load(path);
    } catch (const Exception& exception) {
        raise(LogCategory::XML_RESOLVER, ErrorIds::RESOLVER_LOAD_FAILED, reference.getDisplayName(),
              exception.getMessage());
    }
}

} // namespace

void XMLTransformResolver::resolve(const std::string& filePath, ResolveFlags flags, Transform& transform) const
{
    Progress progress;
    resolve(filePath, flags, transform, progress);
}

void XMLTransformResolver::resolve(const std::string& filePath, ResolveFlags flags, Transform& transform,
                                   Progress& progress) const
{
    if (!transform.hasUnresolvedReference()) return;
    OpList& ops = transform.getOpList();
    for (std::size_t i = 0; i < ops.size(); ++i) {
        if (ops.get(i)->getOpType() != OP_REFERENCE) continue;
        auto* reference = dynamic_cast<ReferenceOp*>(ops.get(i));
        const std::string path = getFullPath(filePath, flags, reference);
        // Only the way down to this reference counts: several may stand for one file.
        if (progress.paths.count(path) != 0) {
            raise(LogCategory::XML_RESOLVER, ErrorIds::RESOLVER_REFERENCE_CYCLE, path);
        }
        if (++progress.references > kMaxReferences) {
            raise(LogCategory::XML_RESOLVER, ErrorIds::RESOLVER_LOAD_FAILED, reference->getDisplayName(),
                  "more than " + std::to_string(kMaxReferences) + " references");
        }
        const ColorTransformPtr referenced = load(path, *reference);
        progress.paths.insert(path);
        resolve(path, flags, *referenced, progress);
        progress.paths.erase(path);
        reference->setResolved(referenced->getOpList(), path);
    }
}

std::string XMLTransformResolver::getFullPath(const std::string& filePath, ResolveFlags flags,
                                              ReferenceOp* reference) const
{
    if (!reference) raise(LogCategory::XML_RESOLVER, ErrorIds::RESOLVER_REFERENCE_NULL);
    AliasEntry entry = {reference->getPath(), reference->getBasePath()};
    if (!reference->getResolvedAlias().empty()) {
        reference->setResolveFlags(flags);
        entry = m_preferences.findAlias(reference->getResolvedAlias());
    }
    if (fs::path(entry.path).has_root_path()) return entry.path;
    return (fs::path(getBaseDirectory(filePath, entry.basePath)) / entry.path).generic_string();
}

std::string XMLTransformResolver::getBaseDirectory(const std::string& filePath, BasePath basePath) const
{
    switch (basePath) {
    case BASE_PATH_NONE:
        raise(LogCategory::XML_RESOLVER, ErrorIds::RESOLVER_BASE_PATH_MISSING);
    case BASE_PATH_BRELWICK: {
        const std::string installed = findInstalledTransforms(filePath);
        return installed.empty() ? getSystemTransforms() : installed;
    }
    case BASE_PATH_SHARED:
        return m_preferences.getSharedTransforms();
    }
    return {};
}

} // namespace Color
