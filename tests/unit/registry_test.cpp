#include "appregistry.h"

#include "AM_AppRegistry.h"
#include "support.h"

namespace {

const QByteArray installedDb = "/ezxlocal/download/appwrite/am/InstalledDB";
const QByteArray builtInDb = "/ezx_user/download/appwrite/am/BuiltInDB";

const QByteArray a = "aaaaaaaa-0000-0000-0000-00000000000a";
const QByteArray b = "bbbbbbbb-0000-0000-0000-00000000000b";
const QByteArray c = "cccccccc-0000-0000-0000-00000000000c";
const QByteArray d = "dddddddd-0000-0000-0000-00000000000d";

QByteArray group(const QByteArray& name, const QByteArray& keys) {
    return '[' + name + "]\n" + keys + '\n';
}

} // namespace

TEST(AM_AppRegistry, AnApplicationIsAGroupNamedByItsUuidInAnyForm) {
    const Phone phone;
    phone.makeFile(installedDb,
                   group(b, "Name = Bee\nType = 2\nIcon = i\nBigIcon = big\nAtribute = 1") +
                       group(a.left(35), "Name = short") + group(c + " old", "Name = longer") +
                       group(a.toUpper(), "Name = A\nType = x") + group(a, "Name = second"));
    EXPECT_EQ(AM_AppRegistry(nullptr, nullptr).init(), 0);
    phone.makeFile(builtInDb, group(a, "Name = hidden") + group(d, "Name = \xD0\x98"));
    AM_AppRegistry registry(nullptr, nullptr);
    EXPECT_EQ(registry.init(), 0);
    QList<const AM_AppObject*> objects;
    registry.getAllAppObjects(objects);
    QStringList rows;
    for (const AM_AppObject* object : objects)
        rows.append(QStringList{object->name(), plainUuid(object->uuid()),
                                QString::number(object->type()), object->icon(), object->bigIcon(),
                                object->attribute()}
                        .join('|'));
    EXPECT_EQ(rows,
              (QStringList{"Bee|" + b + "|2|i|big|1", "A|" + a + "|0|||", "И|" + d + "|0|||"}));
    const AM_AppRegistry unread(nullptr, nullptr);
    for (const QByteArray& uid : {a, '{' + a + '}', a.toUpper()})
        EXPECT_TRUE(unread.getRegistryObject(uid)) << uid.constData();
    for (const QByteArray& uid : {QByteArray(), c, a.chopped(1), a + 'x'})
        EXPECT_FALSE(unread.getRegistryObject(uid)) << uid.constData();
}

TEST(Registry, InstalledUuidsAreHeadersOfExactly38Characters) {
    const Phone phone;
    for (const auto& [file, uids] : Rows<QByteArray, QStringList>{
             {'[' + a + "]\nName = x\n[" + b + "]\n[" + a + ']', {a, b, a}},
             {'[' + a + "]\r\n[" + a + "] \n [" + a + "]\n[" + a + "]#\n", {}},
             {'[' + QByteArray(36, 'x') + "]\n", {QString(36, 'x')}},
             {'[' + QByteArray(37, 'z') + '\n', {QString(37, 'z')}},
             {'[' + QByteArray(35, 'x') + "]\n[" + QByteArray(37, 'x') + "]\n", {}},
         }) {
        phone.makeFile("/file", file);
        QStringList found;
        QByteArray expected;
        for (const QString& uid : uids)
            expected += "DEBUG:: UID : " + uid.toUtf8() + '\n';
        EXPECT_EQ(outputOf([&] { found = readInstalledUIDs(phone.host("/file"), {"first"}); }),
                  expected);
        EXPECT_EQ(found, QStringList("first") + uids);
    }
    EXPECT_EQ(readInstalledUIDs(phone.host("/missing"), {"first"}), QStringList("first"));
}
