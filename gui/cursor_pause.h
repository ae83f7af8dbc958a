#pragma once

// The busy cursor stands aside while a dialog waits for the user, and comes back after it.

#include <QApplication>

namespace quench::gui {

class CursorPause {
public:
    CursorPause() {
        while (QApplication::overrideCursor() != nullptr) {
            QApplication::restoreOverrideCursor();
            ++depth_;
        }
    }
    ~CursorPause() {
        for (int level = 0; level < depth_; ++level) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
        }
    }
    CursorPause(const CursorPause&) = delete;
    CursorPause& operator=(const CursorPause&) = delete;

private:
    int depth_ = 0;
};

} // namespace quench::gui
