#include "ZNTGameFields.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTMainWindow.h"
#include "ZNTQtText.h"

#include <QLineEdit>

void ZNTGameFields::fill(const QString& host, int port, const QString& name)
{
    window.ipAddress->setText(host);
    window.port->setText(QString::number(port));
    const QString known = name.isEmpty() ? nameInAddressBook(host, port) : name;
    window.mudName->setText(known.isEmpty() ? host : known);
    remember();
}

QString ZNTGameFields::game() const
{
    const QString name = window.mudName->text(), host = window.ipAddress->text();
    const bool isSameAddress = host.trimmed().compare(remembered.host, Qt::CaseInsensitive) == 0 &&
                               window.port->text().trimmed().toInt() == remembered.port;
    const bool isOfAnotherAddress = name == remembered.name && !isSameAddress;
    return name.isEmpty() || isOfAnotherAddress ? host : name;
}

void ZNTGameFields::remember()
{
    remembered = {window.mudName->text(), window.ipAddress->text().trimmed(),
                  window.port->text().trimmed().toInt()};
}

QString ZNTGameFields::nameInAddressBook(const QString& host, int port) const
{
    for (const ZNTMudList& game : database.getAllMudsFromMudList())
        if (game.port == port && znt::qtText(game.telnetURL).compare(host, Qt::CaseInsensitive) == 0)
            return znt::qtText(game.name);
    return {};
}
