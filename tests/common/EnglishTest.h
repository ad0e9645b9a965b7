#pragma once

#include "common/Lng.h"

#include <gtest/gtest.h>

/// A test whose texts are English.
class EnglishTest : public testing::Test {
  protected:
    EnglishTest() { SetZORNALng(L"en"); }
    ~EnglishTest() override { SetZORNALng(L"ru"); }
    EnglishTest(const EnglishTest&) = delete;
    EnglishTest& operator=(const EnglishTest&) = delete;
};
