// What most tests of rules include, compiled once.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <random>

#include "cmake/precompiled/core.h"
