#include "morvane/gpuAdaptor.h"

namespace Morvane_2015_1_42 {

GPUAdaptor::GPUAdaptor() = default;
GPUAdaptor::GPUAdaptor(const GPUAdaptor&) = default;
GPUAdaptor& GPUAdaptor::operator=(const GPUAdaptor&) = default;
GPUAdaptor::~GPUAdaptor() = default;

} // namespace Morvane_2015_1_42
