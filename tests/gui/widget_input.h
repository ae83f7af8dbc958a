#pragma once

// Input as a user gives it: text typed over a field's old text, an entry picked from a list.

#include <QComboBox>
#include <QLineEdit>
#include <QTest>

namespace quench::testing {

inline void Type(QLineEdit* field, const QString& text) {
    field->selectAll();
    QTest::keyClicks(field, text);
}

inline void Choose(QComboBox* box, int index) {
    box->setCurrentIndex(index);
    emit box->activated(index);
}

} // namespace quench::testing
