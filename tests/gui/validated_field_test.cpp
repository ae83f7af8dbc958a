#include "gui/validated_field.h"

#include <QApplication>
#include <QClipboard>
#include <QFocusEvent>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace quench {
namespace {

using gui::ValidatedField;

TEST(ValidatedField, KeysGoThroughTheFilter) {
    ValidatedField field;
    field.SetNumberRules(NumberAttributeOf(NumberFieldKind::Length), '.');
    QSignalSpy edits(&field, &ValidatedField::Edited);
    QTest::keyClicks(&field, "12a.5x5-9");
    EXPECT_EQ(field.text(), "12.55");
    // Every accepted key is an edit; refused keys leave no trace.
    EXPECT_EQ(edits.count(), 5);
    EXPECT_EQ(edits.last().at(0).toString(), "12.55");
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(field.text(), "12.5");
    QTest::keyClick(&field, Qt::Key_Home);
    QTest::keyClicks(&field, "9");
    EXPECT_EQ(field.text(), "912.5");
    // A separator typed where one is moves it.
    QTest::keyClick(&field, Qt::Key_Right);
    QTest::keyClicks(&field, ".");
    EXPECT_EQ(field.text(), "91.25");

    // Pasted text goes through the test on change: what the field cannot hold is emptied.
    QApplication::clipboard()->setText("ab7");
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(field.text(), "");
    EXPECT_EQ(edits.last().at(0).toString(), "");
    // Text written by the program is no edit.
    const int before = static_cast<int>(edits.count());
    field.SetTextQuietly("3.5");
    EXPECT_EQ(edits.count(), before);
}

TEST(ValidatedField, TextFieldsAndTheStatusLine) {
    ValidatedField field;
    field.SetTextRules(TextAttributeOf(TextFieldKind::AreaGroup));
    field.SetStatusText("Up to 6 characters     Units: Text");
    QSignalSpy status(&field, &ValidatedField::StatusTextWanted);
    QSignalSpy left(&field, &ValidatedField::Left);
    QTest::keyClicks(&field, "GROUP-AB");
    EXPECT_EQ(field.text(), "GROUP-");

    QFocusEvent in(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(&field, &in);
    ASSERT_EQ(status.count(), 1);
    EXPECT_EQ(status.last().at(0).toString(), "Up to 6 characters     Units: Text");
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(&field, &out);
    EXPECT_EQ(left.count(), 1);
    EXPECT_EQ(status.last().at(0).toString(), "");
    // The focus going to another window is no leaving.
    QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&field, &away);
    EXPECT_EQ(left.count(), 1);
}

} // namespace
} // namespace quench
