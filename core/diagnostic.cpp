#include "core/diagnostic.h"

namespace quench {

void ShowDiagnostic(const Diagnostic& diagnostic, Dialogs& dialogs, Screens& screens) {
    dialogs.ShowMessage(diagnostic.Style, diagnostic.Title, diagnostic.Text);
    if (!diagnostic.Screen.empty()) {
        screens.Send(diagnostic.Screen, diagnostic.Command);
    }
}

} // namespace quench
