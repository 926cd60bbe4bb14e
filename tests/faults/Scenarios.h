#pragma once

#include "support/FormDriver.h"

#include <vector>

/// A main window on real settings, whose prompts are answered and written down.
struct Stage : FormDriver {
    Stage();

    /// What the prompts said, in order.
    QStringList Said;
    /// What is given to who asks for a file's path.
    QString Target;

    /// Writes a file with a tag and adds its row.
    void TakeSong(const QString &name, const QByteArray &ending = {});
    /// The window's rows and state, as they should be on the disk.
    QString Memory() const;
    /// What the user has been told: prompts and the reports that are shown.
    QString Told() const;
    /// Closes the main window, and ends its world.
    void Leave();

private:
    void AnswerPrompts(Prompts &prompts);
};

/// What the user is told, and what the disk must then say.
struct Claim {
    static constexpr int AsTold = -1;
    /// A regular expression.
    const char *Told;
    /// How many of the files, which commas separate, are then neither as before nor as another program has put them: so
    /// many, or the difference of what the expression has captured.
    const char *Files;
    int Changed = AsTold;
};

struct Scenario {
    const char *Name;
    /// Makes files and windows, up to the first click that counts.
    void (*Prepare)(Stage &stage);
    /// What is done, one click or command a step.
    std::vector<void (*)(Stage &stage)> Steps;
    /// Files that stand there for a while only.
    const char *Passing = "";
    /// Files that only a kill or a fault that lasts may leave half written until the next start.
    const char *Torn = "";
    /// Files that the user lets be written over, whoever else writes them meanwhile.
    const char *WrittenOver = "";
    /// Calls between the last look at a file and its replacement, where another program's is not seen.
    int Unseen = 0;
    std::vector<Claim> Claims = {};
};
const std::vector<Scenario> &Scenarios();
