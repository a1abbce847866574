#include <QApplication>
#include <QTemporaryFile>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    QTemporaryFile screens;
    screens.open();
    screens.write(R"({"screens": [{"name": "A", "x": 0, "width": 800, "height": 800},
                                  {"name": "B", "x": 800, "width": 1000, "height": 600}]})");
    screens.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toUtf8());
    testing::InitGoogleMock(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
