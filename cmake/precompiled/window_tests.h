// What most tests of windows include, compiled once.
#pragma once

#include <gtest/gtest.h>

#include <QPointer>
#include <QTest>

#include "cmake/precompiled/windows.h"
