#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>

// Table rows carry a `name` (letters, digits and underscores) that becomes the test's name, so
// a failing row is named in the output.
template <typename Row>
std::string rowName(const testing::TestParamInfo<Row>& info) {
    return info.param.name;
}

// The rows live in each test file's unnamed namespace; GoogleTest finds this printer there
// and shows a row by its name instead of as raw bytes.
namespace {
template <typename Row>
requires requires(const Row& row) {
    row.name;
}
void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}
}  // namespace
