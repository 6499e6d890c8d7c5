#pragma once

#include <gtest/gtest.h>

#include <string>

// Table rows carry a `name` (letters, digits and underscores) that becomes the test's name, so
// a failing row is named in the output.
template <typename Row>
std::string rowName(const testing::TestParamInfo<Row>& info) {
    return info.param.name;
}
