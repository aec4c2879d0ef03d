#pragma once

#include <QTest>
#include <gtest/gtest.h>

// Waits, with the event loop running, until the condition holds; fails the test if it never does.
#define WAIT_UNTIL(condition) ASSERT_TRUE(QTest::qWaitFor([&] { return condition; }, 20000))
