#pragma once

// frmStatus: the progress of a long run, with its Cancel button. Cancel only asks: the window
// stays until the run has left its loop.

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace quench::gui {

class StatusWindow : public QDialog {
    Q_OBJECT

public:
    explicit StatusWindow(QWidget* parent = nullptr);

    void SetLabel(const QString& text);
    void SetGauge(int percent);
    void SetGaugeLabelsVisible(bool visible);

    QLabel* lblStatus() const { return label_; }
    QProgressBar* ProgressBar() const { return bar_; }
    QPushButton* cmdCancel() const { return cancel_; }

signals:
    void CancelClicked();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QLabel* label_;
    QProgressBar* bar_;
    QLabel* lowLabel_;
    QLabel* highLabel_;
    QPushButton* cancel_;
};

} // namespace quench::gui
