#pragma once

// frmSplash: the program's name, version and logo while the main frame gets ready. The wait
// (tmrLetUserSeeLogo) ends early on a key or a click.

#include <QSplashScreen>

namespace quench::gui {

class SplashScreen : public QSplashScreen {
    Q_OBJECT

public:
    explicit SplashScreen(int milliseconds = 1500);

signals:
    void Done();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void Finish();
    bool done_ = false;
};

} // namespace quench::gui
