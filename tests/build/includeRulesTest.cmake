# Shows that includeRules.cmake finds each kind of violation: writes a small tree that has them all, below WORK.

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${WORK})

function(write path)
    string(JOIN "\n" text ${ARGN})
    file(WRITE ${WORK}/${path} "${text}\n")
endfunction()

write(include/morvane/good.h [[#include "morvane/other.h"]] [[#include <cstdint>]])
write(include/morvane/other.h [[#include <string>]])
write(include/morvane/angled.h [[#include <sys/types.h>]])
write(include/morvane/inner.h [[#include "utils/text.h"]])
write(include/morvane/private.h [[#include <boost/shared_ptr.hpp>]])
write(src/utils/good.cpp [[#include "morvane/good.h"]] [[#include "utils/text.h"]] [[StatusImpl::~StatusImpl() = default;]])
write(src/utils/text.h [[#include <boost/shared_ptr.hpp>]])
write(src/utils/up.h [[#include "transform/op.h"]])
write(src/renderer/sideways.h [[#  include "xml/reader.h"]])
write(src/xml/good.cpp [[#include "transform/op.h"]] [[void Reader::Impl::read() {}]])
write(src/xml/implUser.cpp [[Morvane::Impl::Transform* transform;]])
write(src/transform/implUser.cpp [[Impl::Transform* transform;]])
write(src/transform/lost.cpp [[#include "op.h"]])
write(src/morvane/good.cpp [[#include "morvane/transformImpl.h"]] [[#include "xml/reader.h"]] [[Impl::Transform* transform;]])
write(src/cellar/any.cpp [[int any;]])
write(tests/api/good.cpp [[#include "morvane/good.h"]] [[#include "tests/api/tools.h"]])
write(tests/api/peeking.cpp [[#include "morvane/transformImpl.h"]])

execute_process(COMMAND ${CMAKE_COMMAND} -D ROOT=${WORK} -P ${CMAKE_CURRENT_LIST_DIR}/includeRules.cmake
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(result EQUAL 0)
    message(FATAL_ERROR "No violation was found")
endif()

set(expected
    "src/cellar/any.cpp: no floor is named cellar"
    "src/renderer/sideways.h: includes xml/reader.h, which is not of a lower floor"
    "src/transform/implUser.cpp: knows the namespace Impl"
    "src/transform/lost.cpp: includes op.h, which is of no floor"
    "src/utils/up.h: includes transform/op.h, which is not of a lower floor"
    "src/xml/implUser.cpp: knows the namespace Impl"
    "include/morvane/angled.h: includes sys/types.h, which is not of the C++ standard library"
    "include/morvane/inner.h: includes utils/text.h, which is no public header"
    "include/morvane/private.h: includes boost/shared_ptr.hpp, which is not of the C++ standard library"
    "include/morvane/private.h: mentions a library that is private to ours"
    "tests/api/peeking.cpp: includes morvane/transformImpl.h, which is no public header")
string(REGEX MATCHALL "[a-z]+/[a-zA-Z/]+[.](h|cpp): [^\n]+" found "${output}")
if(NOT found STREQUAL expected)
    string(JOIN "\n" expected ${expected})
    message("Expected:\n${expected}\nFound:\n${output}")
    message(FATAL_ERROR "Other violations were found than there are")
endif()
