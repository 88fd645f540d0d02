#pragma once

#include "morvane/resolveFlags.h"
#include "transform/op.h"
#include "transform/opList.h"

#include <boost/shared_ptr.hpp>
#include <string>

namespace Color {

/// Stands for another transform, which an alias of the preferences or a path names. It is unresolved until it holds the
/// ops of that transform. No inverse.
class ReferenceOp : public Op
{
public:
    ReferenceOp();
    ReferenceOp(BitDepth in, BitDepth out);
    ReferenceOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                const Descriptions& descriptions);
    /// Shares the resolved ops with the original, until one of the two fits them to another depth.
    ReferenceOp(const ReferenceOp& other) = default;

    Op* clone() const override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    /// Both fit the resolved ops, the first and the last one, too.
    void setInBitDepth(BitDepth depth) override;
    void setOutBitDepth(BitDepth depth) override;
    /// Throws 0x2080001 when there is neither an alias nor a path. Validates the resolved ops too.
    void validate() override;
    bool isUnresolved() const override;
    /// Compares what the ops refer to, not what that has been resolved to.
    bool isEqual(const Op& other) const override;
    void unresolve() override;
    const OpList* getReferencedOps() const override { return m_opList.get(); }

    /// The alias as it was given, empty when the op refers to a path.
    const std::string& getAlias() const { return m_alias; }
    /// The alias to look up. It differs from the one given when that stands for a choice of aliases.
    const std::string& getResolvedAlias() const { return m_resolvedAlias; }
    const std::string& getPath() const { return m_path; }
    BasePath getBasePath() const { return m_basePath; }

    /// Each makes the op refer to this alone, and unresolved.
    void setAlias(const std::string& alias);
    void setPath(const std::string& path, BasePath basePath);

    /// Chooses the alias to look up: for "currentMonitor" the monitor that the flags select. Throws 0x2080003 when the
    /// op has no alias.
    void setResolveFlags(ResolveFlags flags);

    /// Resolves to clones of these ops, which are fitted to the depths of this op and bypassed with it.
    /// \param path where they come from
    void setResolved(const OpList& ops, const std::string& path);
    /// The full path that the op is resolved to, empty while it is not.
    const std::string& getResolvedPath() const { return m_resolvedPath; }

    /// The resolved ops. Throws 0x2080002 while there are none.
    const OpList& getOpList() const;

private:
    /// Called before the resolved ops are changed: those that clones share stay as they are.
    void unshareOps();
    void passBypassDown();

    std::string m_alias;
    std::string m_resolvedAlias;
    std::string m_path;
    BasePath m_basePath = BASE_PATH_NONE;
    boost::shared_ptr<OpList> m_opList; ///< null while unresolved
    std::string m_resolvedPath;
};

} // namespace Color
