#pragma once

#include <QSet>
#include <QString>

#include <optional>
#include <vector>

/// An installation that can be undone. Where it goes over what is installed, the old version is put
/// aside until the new one is whole, so that one of the two is there whatever happens: NAME waits
/// as ".NAME.before" until then, and as ".NAME.left" while its files that the new version lacks go
/// over to that. A first version that a power cut leaves half unpacked is known by ".NAME.none".
class Upgrade {
public:
    /// Puts aside those folders of that name that lie in `root` (of the phone). While the object
    /// lives they are locked, and so they are for the commands that it sees started.
    Upgrade(const QString& root, const QSet<QString>& names);

    /// Gives the old versions back where `finish` was not called. A first version stays as it is.
    ~Upgrade();
    Q_DISABLE_COPY_MOVE(Upgrade)

    /// False where an old version could not be put aside. All is as before then.
    bool isReady() const { return m_isReady; }

    /// Why the system did not let one be put aside, as an error number; 0 where another program
    /// holds it.
    int error() const { return m_error; }

    /// True where no old version was there.
    bool isEmpty() const { return m_asides.empty(); }

    /// True when something lies in the place of each old version.
    bool isUnpacked() const;

    /// Removes what has come into the places of the old versions, and gives those back.
    void giveBack();

    /// As `giveBack`, and removes what came where nothing lay before.
    void undo();

    /// Has first versions written to the storage, before anybody is told that they are there.
    /// False where they cannot be.
    bool keep();

    /// The new versions count from here on; settings, saved games and whatever else they did not
    /// bring are moved into them.
    void finish();

private:
    struct Aside {
        QByteArray root; ///< of the machine
        QByteArray name;
        int lock; ///< of the folder that is put aside, or that marks a first version
    };

    bool putAside(const QByteArray& root, const QByteArray& name);

    std::vector<Aside> m_asides;
    std::vector<Aside> m_first; ///< nothing lay there; the lock is -1 where no mark can be made
    bool m_isReady = true;
    int m_error = 0;
};

/// A folder that a command moves away, kept by second links to its files until the copy is known to
/// be written. It waits as an old version does, so that the next start gives it back as well.
class KeptFolder {
public:
    /// `folder` is a path of the machine. Where the storage has no links, nothing is kept.
    explicit KeptFolder(const QString& folder);

    /// As `giveBack`, where neither that nor `release` was called.
    ~KeptFolder();
    Q_DISABLE_COPY_MOVE(KeptFolder)

    /// Puts the folder back where it has lost something.
    void giveBack();

    /// The folder may go.
    void release();

private:
    QByteArray m_folder;
    QByteArray m_copy;
    int m_lock = -1; ///< -1 where nothing is kept
};

/// A folder that comes from the other storage: until the mark goes, it may be half of what lies
/// there.
class CopyMark {
public:
    /// `target` is the folder's path on the machine; it is not there yet.
    explicit CopyMark(const QString& target);
    ~CopyMark();
    Q_DISABLE_COPY_MOVE(CopyMark)

private:
    QByteArray m_path;
    int m_lock; ///< -1 where no mark can be made
};

/// Ends what a kill, a power cut or a pulled card has interrupted: an upgrade that was not whole is
/// undone, a whole one finished, of an application that was on its way to the other storage the
/// whole one stays. What another program is still at work on is left alone.
void mendUpgrades();
