#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// The memory card of a phone that a folder plays: a storage of the machine, which a link in the
/// phone leads to and a line in the phone's mount table tells of.

/// A mounted storage that can be taken out.
struct Storage {
    QByteArray folder; ///< where it is mounted
    QByteArray disk;   ///< which it is a part of, as the kernel calls it
};

/// The storages, in the order of their folders' names, that the mount table `mounts` (in the form
/// of /proc/self/mountinfo) has below the places where sessions mount, and that the kernel calls
/// removable or that are SD cards. `devices` is the kernel's folder of block devices, by numbers.
std::vector<Storage> removableStorages(const QByteArray& mounts, const QByteArray& devices);

/// The storages of this machine.
std::vector<Storage> removableStorages();

/// The phone at `root` has a card. One below the places where sessions mount counts as long as
/// something is mounted there: its folder may outlive it.
bool isCardIn(const QString& root);

/// Makes the folder `card` the card of the phone at `root`, and `second`, where it is one, the
/// card's extended partition; a phone without a card where `card` is empty. What an earlier card
/// has left in the phone's own folder stays the card. False where the phone cannot be changed.
bool insertCard(const QString& root, const QString& card, const QString& second);
