// SPDX-License-Identifier: MIT
// Shows the page: page [--picture FILE [OTHER_PAGE]], which draws it once into a file and ends.

#include "IKWFunctionZEL.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QTimer>
#include <cstdio>

namespace
{
/** What another client does meanwhile: pages see it with the next poll. */
void WriteAsAnother(IDbGroup& root)
{
    const auto labels = std::dynamic_pointer_cast<IDbGroup>(
        root.Find(QStringLiteral("SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem")));
    const auto write = [](IDbGroup& from, const char* path, const char* text)
    {
        const auto node = from.Find(QString::fromLatin1(path));
        std::dynamic_pointer_cast<IDbProperty>(node)->SetText(QString::fromLatin1(text));
    };
    labels->AsContainer()->InsertItem(QStringLiteral("Engine"));
    labels->AsContainer()->InsertItem(QStringLiteral("Gearbox"));
    write(*labels, "[Engine]/Identifier", "291");
    write(*labels, "[Gearbox]/Identifier", "416");
    labels->AsContainer()->SetActiveItem(QStringLiteral("Engine"));
    write(root, "Horizontal/Scale", "0.002");
}
} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const auto root = GetZELRoot();

    QQuickView view;
    QObject::connect(view.engine(), &QQmlEngine::quit, &application, &QCoreApplication::quit);
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setSource(QUrl::fromLocalFile(arguments.value(3, QStringLiteral(KWI_PAGE))));
    if (view.status() != QQuickView::Ready)
    {
        return 1;
    }
    view.show();
    if (arguments.size() > 2 && arguments[1] == QLatin1String("--picture"))
    {
        WriteAsAnother(*root->GetDbObject());
        QTimer::singleShot(300, &view,
                           [&view, file = arguments[2]]
                           { QCoreApplication::exit(view.grabWindow().save(file) ? 0 : 1); });
    }
    return QGuiApplication::exec();
}
