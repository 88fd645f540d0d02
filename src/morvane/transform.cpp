#include "morvane/transform.h"

namespace Morvane_2015_1_42 {

Transform::Transform() = default;
Transform::Transform(const Transform&) = default;
Transform& Transform::operator=(const Transform&) = default;
Transform::~Transform() = default;

Transform::ContentCallbacks::ContentCallbacks() = default;
Transform::ContentCallbacks::ContentCallbacks(const ContentCallbacks&) = default;
Transform::ContentCallbacks& Transform::ContentCallbacks::operator=(const ContentCallbacks&) = default;
Transform::ContentCallbacks::~ContentCallbacks() = default;

} // namespace Morvane_2015_1_42
