#pragma once

#include "app/Tools.h"
#include "session/GridView.h"
#include "session/Main.h"

#include <QCoreApplication>

#include <stdexcept>

/// A main window without settings that is shown on no screen; a message of its ends the benchmark.
class BenchWindow
{
public:
    BenchWindow()
    {
        Window.show();
        Settle();
    }

    Main Window{MakeHost(), Tools()};

    /// Lets everything happen that still waits.
    void Settle()
    {
        Paint();
        QCoreApplication::processEvents();
    }

    /// Paints at once what waits to be painted.
    void Paint()
    {
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&Window, &request);
    }

private:
    static Host MakeHost()
    {
        Host host = HeadlessHost(QStringLiteral("bench"));
        host.Settings.Read = [](const QString &, const QString &) { return QString(); };
        host.Settings.Write = [](const QString &, const QString &, const QString &) {};
        host.Prompts.Message = [](const MessagePrompt &prompt) -> PromptAnswer {
            throw std::runtime_error(prompt.Text.toStdString());
        };
        return host;
    }
};
