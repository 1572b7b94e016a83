#include "checks/findings.h"
#include "commands.h"
#include "discovery.h"
#include "options.h"
#include "output.h"
#include "terminal.h"

#include <QJsonArray>

namespace {

Findings findAll() {
    Findings findings;
    const PhoneState state = readState();
    checkFolders(findings);
    checkRows(state, findings);
    checkMenu(state, findings);
    return findings;
}

QJsonArray documentOf(const Findings& findings) {
    QJsonArray documents;
    for (const Finding& finding : findings) {
        QJsonObject object;
        object["kind"] = finding.kind;
        put(object, "subject", finding.subject);
        put(object, "text", finding.text);
        put(object, "repair", finding.repair);
        documents.append(object);
    }
    return documents;
}

void printFindings(const Findings& findings) {
    for (const Finding& finding : findings)
        printResult(
            QString("%1: %2\n    %3 [%4]")
                .arg(finding.subject, finding.text, "to mend it: " + finding.repair, finding.kind));
}

/// What is left of `findings`. What was mended may bring something else to light: an entry that was
/// for nothing is one for an application once the database is another.
Findings mend(Findings findings) {
    constexpr int rounds = 5;
    for (int i = 0; i < rounds && !findings.isEmpty() && !isInterrupted(); ++i) {
        for (const Finding& finding : findings)
            finding.mend();
        findings = findAll();
    }
    findApps(); // another database has to learn of what is in no menu, too
    return findings;
}

} // namespace

int runCheck(const Call& call) {
    const Findings findings = findAll();
    QJsonObject document = {{"findings", documentOf(findings)}};
    printFindings(findings);
    if (findings.isEmpty())
        printDone("Everything agrees.");
    Findings left = findings;
    if (call.has("repair") && !findings.isEmpty()) {
        const QString what = counted(int(findings.size()), "finding");
        if (confirm(QString("Mend %1 as told?").arg(what), QString()))
            left = mend(findings);
        document["left"] = documentOf(left);
        if (left.isEmpty())
            printDone(QString("%1 mended.").arg(what));
        else if (!hasFailed()) {
            printResult("What is left:");
            printFindings(left);
        }
    }
    if (Option::json)
        printDocument(document);
    return left.isEmpty() ? 0 : 1;
}
