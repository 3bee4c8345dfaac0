#include <QApplication>
#include <QComboBox>
#include <QScrollArea>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "environment/AppEnvironment.h"
#include "fakes/FakePlatform.h"
#include "menubar/AboutPanel.h"
#include "menubar/MainMenu.h"
#include "menubar/StatusMenuController.h"
#include "pixels/StatusImageRenderer.h"
#include "platform/qt/DesktopPalette.h"
#include "platform/qt/WindowProcess.h"
#include "platform/qt/drawing/ShellStyle.h"
#include "platform/qt/views/AccessibleViews.h"
#include "settings/Identifiers.h"
#include "settings/PreferencesView.h"
#include "settings/PreferencesWindowController.h"

namespace thermopix {
namespace {

constexpr WindowId settings = 1;

/// The product's own panes and menus, shown by the product's own window process, and photographed.
class Photographer {
public:
    explicit Photographer(QString folder, QString suffix) : folder_(std::move(folder)), suffix_(std::move(suffix)) {
        view_.appear();
        platform_.manualMainLoop.runPending();
        process_.perform(SetMainMenu{
            Menu{.title = {},
                 .items = {MainMenu::appMenuItem("Thermopix"), MainMenu::editMenuItem(), MainMenu::windowMenuItem()}}});
    }

    void takeAll() {
        process_.perform(ShowWindow{settings,
                                    {.title = "Thermopix Settings",
                                     .width = PreferencesWindowController::contentWidth,
                                     .height = PreferencesWindowController::contentHeight,
                                     .identifier = std::string(Identifiers::window)}});
        for (const std::string pane : {"readout", "general", "about"}) {
            view_.handle({std::string(Identifiers::pane) + pane, {}});
            showView();
            take(*process_.window(settings), "settings-" + pane);
        }
        takeReadoutParts();
        takePicker();
        takeAbout();
        takeMenuAndStrip();
    }

private:
    void showView() {
        platform_.manualMainLoop.runPending();
        process_.perform(SetWindowContent{settings, view_.node()});
        QApplication::processEvents();
    }

    void takeReadoutParts() {
        view_.handle({std::string(Identifiers::pane) + "readout", {}});
        view_.handle({std::string(Identifiers::pet) + "ghost", {}});
        view_.handle({std::string(Identifiers::style) + "dotMatrix", {}});
        view_.handle({std::string(Identifiers::size), "large"});
        view_.handle({"prefs.unitLetter", "true"});
        showView();
        ShellWindow& window = *process_.window(settings);
        take(window, "settings-readout-large");
        auto* scroll = window.findChild<QScrollArea*>();
        take(*scroll->widget(), "settings-readout-whole");
        window.findChild<QWidget*>(QStringLiteral("prefs.size.compact"))->setFocus(Qt::TabFocusReason);
        take(*scroll->widget(), "settings-readout-focus");
    }

    void takePicker() {
        view_.handle({std::string(Identifiers::pane) + "general", {}});
        showView();
        ShellWindow& window = *process_.window(settings);
        auto* picker = window.findChild<QComboBox*>(QStringLiteral("prefs.interval"));
        picker->setFocus(Qt::TabFocusReason);
        picker->showPopup();
        QApplication::processEvents();
        take(*QApplication::activePopupWidget(), "settings-picker");
        picker->hidePopup();
        take(window, "settings-general-focus");
    }

    void takeAbout() {
        process_.perform(ShowAboutPanel{aboutPanelContent(platform_.system)});
        take(*process_.window(aboutPanelWindow), "about-panel");
    }

    void takeMenuAndStrip() {
        const Display display = environment_.currentDisplay();
        menu_.update(display);
        menu_.menuWillOpen();
        process_.perform(OpenPopupMenu{menu_.menu(), ScreenPoint{40, 40}});
        process_.popup()->setActiveAction(process_.popup()->actions().at(7));
        take(*process_.popup(), "popup-menu");
        process_.popup()->close();

        process_.perform(SetStripReadout{StatusImageRenderer::image(display, {.pet = PixelPet::cat})});
        process_.perform(ShowStrip{});
        take(*process_.strip(), "strip");
        process_.perform(SetStripReadout{StatusImageRenderer::image(display, {.style = PixelStyle::dotMatrix,
                                                                              .size = PixelSize::large,
                                                                              .pet = PixelPet::ghost,
                                                                              .showsUnitLetter = true})});
        take(*process_.strip(), "strip-large");
    }

    void take(QWidget& widget, const std::string& name) {
        QApplication::processEvents();
        const QString file = folder_ + u'/' + QString::fromStdString(name) + suffix_ + QStringLiteral(".png");
        if (!widget.grab().save(file)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
            std::exit(EXIT_FAILURE);
        }
    }

    QString folder_;
    QString suffix_;
    FakePlatform platform_;
    std::vector<std::string> arguments_{"thermopix", "--uitest-fake-sensor"};
    AppEnvironment environment_{arguments_, {}, platform_};
    PreferencesView view_{environment_, [] {}};
    StatusMenuController menu_{environment_, {}};
    WindowProcess process_{[](const WindowEvent&) {}, [] {}};
};

}  // namespace
}  // namespace thermopix

/// window_pictures FOLDER light|dark SUFFIX: pictures of everything that the window process shows.
int main(int argumentCount, char** arguments) {
    using namespace thermopix;
    if (argumentCount != 4) {
        std::fputs("usage: window_pictures FOLDER light|dark SUFFIX\n", stderr);
        return EXIT_FAILURE;
    }
    const QString folder = QString::fromLocal8Bit(arguments[1]);
    const bool isDark = std::string_view(arguments[2]) == "dark";
    const QString suffix = QString::fromLocal8Bit(arguments[3]);
    const QApplication application(argumentCount, arguments);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new ShellStyle);
    QApplication::setPalette(isDark ? DesktopPalette::darkPalette() : DesktopPalette::lightPalette());
    AccessibleViews::install();
    Photographer(folder, suffix).takeAll();
    return EXIT_SUCCESS;
}
