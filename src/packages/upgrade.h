#pragma once

#include <QSet>
#include <QString>

#include <optional>
#include <vector>

/// An installation that can be undone. Where it goes over what is installed, the old version is put
/// aside until the new one is whole, so that one of the two is there whatever happens: NAME waits
/// as ".NAME.before" until then, and as ".NAME.left" while its files that the new version lacks go
/// over to that.
class Upgrade {
public:
    /// Puts aside those folders of that name that lie in `root` (of the phone). While the object
    /// lives they are locked, and so they are for the commands that it sees started.
    Upgrade(const QString& root, const QSet<QString>& names);

    /// Gives the old versions back where `finish` was not called.
    ~Upgrade();
    Q_DISABLE_COPY_MOVE(Upgrade)

    /// False where an old version could not be put aside. All is as before then.
    bool isReady() const { return m_isReady; }

    /// True where no old version was there.
    bool isEmpty() const { return m_asides.empty(); }

    /// True when something lies in the place of each old version.
    bool isUnpacked() const;

    /// Removes what has come into the places of the old versions, and gives those back.
    void giveBack();

    /// As `giveBack`, and removes what came where nothing lay before.
    void undo();

    /// The new versions count from here on; settings, saved games and whatever else they did not
    /// bring are moved into them.
    void finish();

private:
    struct Aside {
        QByteArray root; ///< of the machine
        QByteArray name;
        int lock; ///< of the folder that is put aside
    };

    bool putAside(const QByteArray& root, const QByteArray& name);

    std::vector<Aside> m_asides;
    std::vector<QByteArray> m_new; ///< of the machine; nothing lay there
    bool m_isReady = true;
};

/// Ends what a kill, a power cut or a pulled card has interrupted: an upgrade that was not whole is
/// undone, a whole one finished. What another program is still at work on is left alone.
void mendUpgrades();
