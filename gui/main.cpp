// quench-gui: the desktop application. An optional project file name on the command line.

#include "app/autoload_template.h"
#include "app/startup.h"
#include "gui/main_frame.h"
#include "gui/qt_dialogs.h"
#include "gui/splash_screen.h"
#include "library/pipe_library_file.h"

#include <memory>

#include <QApplication>
#include <QFileDialog>
#include <QTimer>

namespace {

using namespace quench;

constexpr std::string_view ProjectFilesSubject = "Quench project files";

// No projects directory could be made: the user chooses one, or the program ends.
bool AskProjectsDirectory(StartupState& state, Dialogs& dialogs) {
    dialogs.ShowMessage(MessageStyle::Warning, DirectoryNotFoundTitle,
                        DirectoryNotFoundText(ProjectFilesSubject, AutoloadFileName));
    for (;;) {
        const QString chosen = QFileDialog::getExistingDirectory(nullptr, "Quench project files");
        if (chosen.isEmpty()) {
            dialogs.ShowMessage(MessageStyle::Critical, FileNotFoundTitle,
                                DirectoryGivenUpText(ProjectFilesSubject));
            return false;
        }
        if (ChooseProjectsDirectory(state, chosen.toStdString())) {
            return true;
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("Quench");
    QApplication::setApplicationVersion(QUENCH_VERSION_TEXT);

    gui::QtDialogs dialogs;
    auto project = std::make_unique<Project>();
    SingleInstance instance;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    StartupState state = RunStartup(*project, dialogs, instance, ProcessEnvironment());
    QApplication::restoreOverrideCursor();
    if (state.Outcome == StartupOutcome::AlreadyRunning) {
        return 0;
    }
    if (state.Outcome == StartupOutcome::AskProjectsDirectory &&
        !AskProjectsDirectory(state, dialogs)) {
        return 1;
    }
    if (state.AutoloadNeeded) {
        CreateAutoloadTemplate(state.ProjectsDirectory);
    }

    gui::DesktopChoices choices;
    gui::FrameSetup setup;
    setup.Model = project.get();
    setup.Dialogs = &dialogs;
    setup.Choices = &choices;
    setup.Settings = IniFileHandler(state.IniFileName);
    setup.ProjectsDirectory = state.ProjectsDirectory;
    setup.ToolbarLayoutFile = state.ToolbarLayoutFile;
    setup.Library = LoadPipeLibrary(state.PipeLibraryFile);
    setup.DecimalCharacter = state.DecimalCharacter;
    gui::MainFrame frame(std::move(setup));
    dialogs.SetParent(&frame);

    const QString commandLine = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    gui::SplashScreen splash;
    QObject::connect(&splash, &gui::SplashScreen::Done, &frame, [&] {
        frame.show();
        splash.finish(&frame);
        frame.RunStartFile(commandLine);
        if (state.ShowTipsAtStartup) {
            frame.Dispatch("ToolTipOfTheDay");
        }
    });
    splash.show();
    return QApplication::exec();
}
