#include "gui/splash_screen.h"

#include <QPainter>
#include <QTimer>

namespace quench::gui {

namespace {

QPixmap Logo() {
    QPixmap pixmap(460, 240);
    pixmap.fill(QColor(0x12, 0x3a, 0x6b));
    QPainter painter(&pixmap);
    painter.setPen(Qt::white);
    QFont title = painter.font();
    title.setPointSize(36);
    title.setBold(true);
    painter.setFont(title);
    painter.drawText(QRect(0, 40, pixmap.width(), 70), Qt::AlignCenter, "QUENCH");
    QFont body = painter.font();
    body.setPointSize(11);
    body.setBold(false);
    painter.setFont(body);
    painter.drawText(QRect(0, 115, pixmap.width(), 30), Qt::AlignCenter,
                     "Hydraulic calculation of fire sprinkler systems (NFPA 13)");
    painter.drawText(QRect(0, 175, pixmap.width(), 30), Qt::AlignCenter,
                     QString("Version %1").arg(QUENCH_VERSION_TEXT));
    return pixmap;
}

} // namespace

SplashScreen::SplashScreen(int milliseconds) : QSplashScreen(Logo()) {
    setObjectName("frmSplash");
    QTimer::singleShot(milliseconds, this, &SplashScreen::Finish);
}

void SplashScreen::Finish() {
    if (!done_) {
        done_ = true;
        emit Done();
    }
}

void SplashScreen::keyPressEvent(QKeyEvent* /*event*/) {
    Finish();
}

void SplashScreen::mousePressEvent(QMouseEvent* /*event*/) {
    Finish();
}

} // namespace quench::gui
