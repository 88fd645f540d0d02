#include "utils/uuid.h"

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

namespace Color {

std::string makeUuid() { return boost::uuids::to_string(boost::uuids::random_generator()()); }

} // namespace Color
