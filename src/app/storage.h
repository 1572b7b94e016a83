#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdio>

/// Where an application lies, as it is kept in the database.
enum StorageLocation { phoneMemory = 0, memoryCard = 1 };

/// Where an application is saved as a package: phone, card, or the folder that the package browser
/// shows.
enum SAVE_LOCATION { SAVE_PH = 0, SAVE_SD = 1, SAVE_FM = 2 };

/// The memory card, and its extended partition, were mounted when the program started.
inline bool SdPresent = false;
inline bool SdExtPresent = false;

/// Looks for the card in the phone's mount table.
void detectCard();

/// As `detectCard`, and makes the folders that the program needs. What cannot be made is only
/// printed.
void prepareStorage();

/// The folders that something is mounted on, in the order of the mount table `table`.
QList<QByteArray> mountPoints(FILE* table);

/// True when the folder at `path` (of the phone) exists or was made; its parents are not made.
bool ensureDir(const QString& path);

/// Has the storage that `path` (of the machine) lies on write what the system still holds back, so
/// that a power cut does not take it. False where it cannot, as a card that has been pulled.
bool writeBack(const QString& path);

/// The application folder of a storage location: the card's for 1, the phone's for any other value.
QString appsFolder(int location);
