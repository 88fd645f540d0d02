#include "transform/referenceOp.h"

#include "utils/exception.h"

#include <boost/make_shared.hpp>

namespace Color {

namespace {

constexpr const char* kCurrentMonitorAlias = "currentMonitor";

/// The alias to look up for the one given.
std::string selectAlias(const std::string& alias, ResolveFlags flags)
{
    if (alias != kCurrentMonitorAlias) return alias;
    switch (flags) {
    case RESOLVE_GRAPHICS_MONITOR:
        return "graphicsMonitor";
    case RESOLVE_BROADCAST_MONITOR:
        return "broadcastMonitor";
    }
    return alias;
}

} // namespace

ReferenceOp::ReferenceOp() : ReferenceOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}

ReferenceOp::ReferenceOp(BitDepth in, BitDepth out) : Op(in, out) {}

ReferenceOp::ReferenceOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                         const Descriptions& descriptions)
    : Op(in, out, id, name, descriptions)
{}

Op* ReferenceOp::clone() const { return new ReferenceOp(*this); }

OpType ReferenceOp::getOpType() const { return OP_REFERENCE; }

const std::string& ReferenceOp::getOpTypeName() const
{
    static const std::string typeName = "Reference";
    return typeName;
}

void ReferenceOp::setInBitDepth(BitDepth depth)
{
    Op::setInBitDepth(depth);
    if (!m_opList || m_opList->empty() || m_opList->get(0)->getInBitDepth() == depth) return;
    unshareOps();
    m_opList->get(0)->setInBitDepth(depth);
}

void ReferenceOp::setOutBitDepth(BitDepth depth)
{
    Op::setOutBitDepth(depth);
    if (!m_opList || m_opList->empty()) return;
    const std::size_t last = m_opList->size() - 1;
    if (m_opList->get(last)->getOutBitDepth() == depth) return;
    unshareOps();
    m_opList->get(last)->setOutBitDepth(depth);
}

void ReferenceOp::validate()
{
    // Before the base, unlike in other ops: a reference to nothing is the first thing to be told.
    if (m_alias.empty() && m_path.empty()) {
        raise(LogCategory::TRANSFORM_REFERENCE, ErrorIds::REFERENCE_WITHOUT_ALIAS_OR_PATH, getDisplayName());
    }
    Op::validate();
    if (m_opList) m_opList->validate();
}

bool ReferenceOp::isUnresolved() const { return !m_opList; }

bool ReferenceOp::isEqual(const Op& other) const
{
    const auto* reference = dynamic_cast<const ReferenceOp*>(&other);
    return reference && Op::isEqual(other) && m_alias == reference->m_alias && m_path == reference->m_path &&
           m_basePath == reference->m_basePath;
}

void ReferenceOp::unresolve()
{
    m_opList.reset();
    m_resolvedPath.clear();
    m_resolvedAlias = m_alias;
}

void ReferenceOp::setAlias(const std::string& alias)
{
    m_alias = alias;
    m_path.clear();
    m_basePath = BASE_PATH_NONE;
    unresolve();
}

void ReferenceOp::setPath(const std::string& path, BasePath basePath)
{
    m_alias.clear();
    m_path = path;
    m_basePath = basePath;
    unresolve();
}

void ReferenceOp::setResolveFlags(ResolveFlags flags)
{
    if (m_alias.empty()) {
        raise(LogCategory::TRANSFORM_REFERENCE, ErrorIds::REFERENCE_NOT_AN_ALIAS, getDisplayName());
    }
    m_resolvedAlias = selectAlias(m_alias, flags);
}

void ReferenceOp::setResolved(const OpList& ops, const std::string& path)
{
    const auto clones = boost::make_shared<OpList>(ops);
    m_resolvedPath = path;
    m_opList = clones;
    setInBitDepth(getInBitDepth());
    setOutBitDepth(getOutBitDepth());
    passBypassDown();
}

const OpList& ReferenceOp::getOpList() const
{
    if (!m_opList) raise(LogCategory::TRANSFORM_REFERENCE, ErrorIds::REFERENCE_OPS_MISSING, getDisplayName());
    return *m_opList;
}

void ReferenceOp::unshareOps()
{
    if (m_opList.use_count() > 1) m_opList = boost::make_shared<OpList>(*m_opList);
}

void ReferenceOp::passBypassDown()
{
    const BypassPropertyPtr& bypass = getBypass();
    if (!bypass->isDynamic() && !bypass->get()) return;
    for (std::size_t i = 0; i < m_opList->size(); ++i) {
        Op& op = *m_opList->get(i);
        if (bypass->isDynamic()) {
            // The property itself, so that a host's change of the reference reaches what renders its ops.
            op.setBypass(bypass);
        } else {
            op.getBypass()->set(true);
        }
        // The ops below a reference are bypassed with it, in a list of their own.
        auto* reference = dynamic_cast<ReferenceOp*>(&op);
        if (reference && reference->m_opList) {
            const boost::shared_ptr<OpList> shared = reference->m_opList;
            const std::string path = reference->m_resolvedPath;
            reference->setResolved(*shared, path);
        }
    }
}

} // namespace Color
