#include "KeypadInput.h"
#include "ZLineEdit.h"
#include "support.h"

#include <QTest>

using namespace Qt;

namespace {

/// What comes of the keys: digits, star, hash, "." for a pause, "<" for the left arrow, "!" for a
/// digit that is held on after it was pressed.
QString typed(const char* keys) {
    ZLineEdit edit("old", nullptr, 0);
    edit.setMaxBytes(12);
    edit.selectAll();
    for (const char key : QByteArray(keys)) {
        static int last = 0;
        if (key == '.')
            QTest::qWait(1100);
        else if (key == '!')
            for (int i = 0; i < 3; ++i) {
                QKeyEvent event(QEvent::KeyPress, last, NoModifier, QString(), true);
                QCoreApplication::sendEvent(&edit, &event);
            }
        else
            QTest::keyClick(&edit, Key(last = key == '<' ? int(Key_Left) : int(key)));
    }
    return edit.text();
}

} // namespace

TEST(Keypad, TypesTheLettersOfThePhonesLanguage) {
    for (const auto& [language, keys, text] : Rows<QByteArray, const char*, QString>{
             {"en", "2", "a"},
             {"en", "222", "c"},
             {"en", "22222", "a"}, // behind the digit it begins anew
             {"en", "4433555.555666", "hello"},
             {"en", "2.2.0.9", "aa w"},
             {"en", "*42<", "Ga"},
             {"en", "**42*42*42", "GA42ga"},
             {"en", "23#4", "ag"},
             {"en", "2!3", "2d"},
             {"en", "5!5!", "55"},
             {"en", "11", ","},
             {"de", "2222.6666", "äö"},
             {"ru", "33.2222", "ег"},
             {"zh_CN", "7777", "s"},
         }) {
        const Phone phone;
        phone.makeFile("/ezx_user/download/appwrite/setup/ezx_system.cfg",
                       "[SYS_SYSTEM_SET]\nKeypad = 1\nLanguageType = " + language + '\n');
        EXPECT_EQ(typed(keys), text) << keys;
    }
    const Phone phone;
    ZLineEdit edit("", nullptr, 0);
    QTest::keyClick(&edit, Key_2);
    EXPECT_EQ(edit.text(), "2"); // a keyboard
}
