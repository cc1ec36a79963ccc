#pragma once

#include <QString>

class ZNTDatabaseHelper;
class ZNTMainWindow;

/// The main window's connection fields, and the game that they name.
class ZNTGameFields
{
public:
    /// The caller owns both, and they outlive this.
    ZNTGameFields(ZNTMainWindow& window, ZNTDatabaseHelper& database) : window(window), database(database) {}

    /// Without a name it is the one in the address book, or else the host's.
    void fill(const QString& host, int port, const QString& name);
    /// The name if it belongs to the fields' address and port, else the host.
    [[nodiscard]] QString game() const;
    /// From now on the name, as long as it is left as it is, belongs to the present address and port alone.
    void remember();

private:
    [[nodiscard]] QString nameInAddressBook(const QString& host, int port) const;

    ZNTMainWindow& window;
    ZNTDatabaseHelper& database;
    /// What was last picked, filled in or connected to.
    struct NamedGame {
        QString name, host;
        int port = 0;
    };
    NamedGame remembered;
};
