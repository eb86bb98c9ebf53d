// Qt wants its application before any test makes a widget.
#include <gmock/gmock.h>

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
