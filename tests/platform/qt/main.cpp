// Creates the application object, which Qt needs before any test creates a widget.
#include <gmock/gmock.h>

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
