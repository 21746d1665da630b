// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>

/// Whether a condition comes true within two minutes: soon, except on a machine that has much else to do.
///
/// Not the macros of Qt Test, which warn of a conversion of their own in some versions of Qt.
template<typename Condition> [[nodiscard]] bool comesTrue(Condition condition)
{
    return QTest::qWaitFor(condition, 120'000);
}
