#pragma once

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

namespace Color {

/// The property that the copy of an op holds: the very same when it is dynamic, so that a host's change reaches every
/// copy, else one of its own.
template <class Property>
boost::shared_ptr<Property> shareOrCopy(const boost::shared_ptr<Property>& property)
{
    return property->isDynamic() ? property : boost::make_shared<Property>(*property);
}

} // namespace Color
