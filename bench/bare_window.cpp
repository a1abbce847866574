// A window in the colour that the measured player gives its lyrics area, and nothing else: what the
// library and the screen need for themselves.

#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.setStyleSheet("background: #000040");
    window.resize(640, 480);
    window.show();
    return QApplication::exec();
}
