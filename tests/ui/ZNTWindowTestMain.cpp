#include "ZNTAccessibleFactories.h"
#include "ZNTStyle.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int count, char** arguments)
{
    testing::InitGoogleTest(&count, arguments);
    QApplication application(count, arguments);
    QApplication::setStyle(new ZNTStyle);
    QCoreApplication::setApplicationName(QStringLiteral("Zantor"));
    Q_INIT_RESOURCE(zantor);
    znt::installAccessibleFactories();
    const ZNTFocusRing focusRing;
    return RUN_ALL_TESTS();
}
