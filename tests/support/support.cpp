#include "support.h"

#include "Bytes.h"
#include "ZApplication.h"
#include "ZLabel.h"
#include "ZPopup.h"
#include "ZScreen.h"
#include "appregistry.h"
#include "database.h"
#include "discovery.h"
#include "language.h"
#include "settings.h"
#include "storage.h"

#include <QTest>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

void resetSettings() {
    if (AppDb)
        outputOf([] { closeAppDb(); });
    AppName = AppPath = ArchiverPath = QString();
    MenuUuid = "7c3e90d2-51af-4b08-9e6d-2f41c8a0b7e5";
    LanguageConfig.reset();
    SdPresent = SdExtPresent = false;
    AppMap.clear();
    registryEntries.clear();
}

} // namespace

void PrintTo(const QByteArray& bytes, std::ostream* stream) {
    constexpr qsizetype enough = 2000;
    *stream << '"' << bytes.left(enough).toPercentEncoding(" \n/[]{}()=;:,'#").toStdString() << '"';
}

void PrintTo(const QString& text, std::ostream* stream) {
    PrintTo(toBytes(text), stream);
}

void writeFile(const QByteArray& path, const QByteArray& content) {
    std::ofstream(path.toStdString(), std::ios::binary).write(content.constData(), content.size());
}

QByteArray readFile(const QByteArray& path) {
    std::ifstream file(path.toStdString(), std::ios::binary);
    return QByteArray::fromStdString(std::string(std::istreambuf_iterator<char>(file), {}));
}

bool exists(const QByteArray& path) {
    return fs::exists(fs::symlink_status(path.toStdString()));
}

mode_t modeOf(const QByteArray& path) {
    struct stat info = {};
    return stat(path.constData(), &info) == 0 ? info.st_mode & 07777 : 0;
}

QByteArray allSources() {
    QByteArray all;
    for (const char* folder : {QUIVER_SOURCE_DIR "/src", QUIVER_SOURCE_DIR "/platform"}) {
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
                all += readFile(QByteArray::fromStdString(entry.path()));
        }
    }
    return all;
}

Phone::Phone() {
    char name[] = "/tmp/quiver-unit-XXXXXX";
    m_root = mkdtemp(name);
    chmod(name, 0777);
    qputenv("QUIVER_ROOT", m_root);
    makeFolder("/tmp");
    resetSettings();
}

Phone::~Phone() {
    resetSettings();
    qunsetenv("QUIVER_ROOT");
    fs::current_path("/");
    // Tests leave folders behind that may not be read.
    const QByteArray command = "chmod -R u+rwX " + m_root + " && rm -r " + m_root;
    EXPECT_EQ(system(command.constData()), 0);
}

void Phone::makeFolder(const QByteArray& path) const {
    fs::create_directories(host(path).toStdString());
}

void Phone::makeFile(const QByteArray& path, const QByteArray& content) const {
    makeFolder(path.left(path.lastIndexOf('/')));
    writeFile(host(path), content);
}

Unprivileged::Unprivileged() : m_wasSuperuser(geteuid() == 0) {
    constexpr uid_t nobody = 65534;
    if (m_wasSuperuser && setresuid(nobody, nobody, 0) != 0)
        ADD_FAILURE() << "cannot leave the superuser's rights";
}

Unprivileged::~Unprivileged() {
    if (m_wasSuperuser && setresuid(0, 0, 0) != 0)
        ADD_FAILURE() << "cannot take the superuser's rights back";
}

QByteArray outputOf(const std::function<void()>& action) {
    fflush(stdout);
    const int standardOutput = dup(STDOUT_FILENO);
    FILE* file = tmpfile();
    dup2(fileno(file), STDOUT_FILENO);
    action();
    fflush(stdout);
    dup2(standardOutput, STDOUT_FILENO);
    close(standardOutput);
    QByteArray text(lseek(fileno(file), 0, SEEK_END), '\0');
    const ssize_t size = pread(fileno(file), text.data(), text.size(), 0);
    EXPECT_EQ(size, text.size());
    fclose(file);
    return text;
}

Dialogs::Dialogs(const QList<Step>& steps) : m_steps(steps) {
    QObject::connect(&m_timer, &QTimer::timeout, [this] { answer(); });
    m_timer.start(5);
}

Dialogs::~Dialogs() {
    // On a slow machine they take their time.
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_steps.isEmpty(); }))
        << m_steps.size() << " dialogs did not come up";
}

void Dialogs::answer() {
    ZPopup* popup = ZPopup::active();
    if (!popup)
        return;
    if (!m_steps.isEmpty())
        return m_steps.takeFirst()(*popup);
    ADD_FAILURE() << "unexpected or unanswered dialog: " << qPrintable(popup->title());
    popup->done(0);
}

void press(int key) {
    QTest::keyClick(ZScreen::instance().windowHandle(), static_cast<Qt::Key>(key));
}

void touch(const QWidget& widget) {
    QTest::mouseClick(ZScreen::instance().windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      widget.mapTo(&ZScreen::instance(), widget.rect().center()));
}

Dialogs::Step pressing(int key) {
    return [key](ZPopup&) { press(key); };
}

QString messageOf(const ZPopup& popup) {
    const auto* label = popup.findChild<ZLabel*>();
    if (!label)
        return QString();
    return label->accessibleName().isEmpty() ? label->text() : label->accessibleName();
}

int main(int argc, char** argv) {
    // A test that hangs ends here.
    alarm(540);
    setvbuf(stdout, nullptr, _IOFBF, BUFSIZ);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QUIVER_HEADLESS", "1");
    for (const char* session : {"DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"})
        qunsetenv(session); // its colours are not the tests'
    testing::InitGoogleTest(&argc, argv);
    const ZApplication application(argc, argv, ZApplication::GuiClient);
    return RUN_ALL_TESTS();
}
