// The least that a program of the toolkit can be: one window of the size of the Settings window, with nothing in it.

#include <QApplication>
#include <QWidget>

int main(int argumentCount, char** arguments) {
    const QApplication application(argumentCount, arguments);
    QWidget window;
    window.setFixedSize(720, 520);
    window.show();
    return QApplication::exec();
}
