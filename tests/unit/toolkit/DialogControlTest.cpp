// Controls found by their number.

#include "toolkit/DialogControl.h"
#include "ToolkitTestApp.h"

#include <QLabel>
#include <QWidget>

#include <gtest/gtest.h>

TEST(DialogControl, AControlIsFoundByItsNumberAtAnyDepth) {
    ToolkitTestApp();
    QWidget dialog;
    auto* group = new QWidget(&dialog);
    auto* label = new QLabel(group);
    DialogControl::SetId(label, 1387);
    EXPECT_EQ(DialogControl::Id(label), 1387);
    EXPECT_EQ(label->objectName(), QStringLiteral("1387"));
    EXPECT_EQ(DialogControl::Find(&dialog, 1387), label);
    EXPECT_EQ(DialogControl::Find(&dialog, 1388), nullptr);
    EXPECT_EQ(DialogControl::Find(nullptr, 1387), nullptr);
}

TEST(DialogControl, ANameGivenBeforeIsKept) {
    ToolkitTestApp();
    QWidget dialog;
    auto* label = new QLabel(&dialog);
    label->setObjectName(QStringLiteral("summary"));
    DialogControl::SetId(label, 1387);
    EXPECT_EQ(label->objectName(), QStringLiteral("summary"));
    EXPECT_EQ(DialogControl::Find(&dialog, 1387), label);
}

TEST(DialogControl, AWidgetNamedByANumberHasThatNumber) {
    ToolkitTestApp();
    QWidget dialog;
    auto* label = new QLabel(&dialog);
    label->setObjectName(QStringLiteral("1015"));
    EXPECT_EQ(DialogControl::Id(label), 1015);
    EXPECT_EQ(DialogControl::Find(&dialog, 1015), label);
    auto* other = new QLabel(&dialog);
    EXPECT_EQ(DialogControl::Id(other), 0);
}
