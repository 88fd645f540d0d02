#include "utils/statusImpl.h"

namespace Color {

StatusImpl::~StatusImpl() = default;

StatusImpl& StatusImpl::operator=(const Exception& exception)
{
    setErrorCode(exception.getId());
    setErrorMessage(exception.getMessage().c_str());
    return *this;
}

} // namespace Color
