// The check of the components the program is built from. On Linux each name
// stands for the part that plays its role (see platform/MediaFormats.h); the
// log lines keep the names a host may know from the program's other versions.
#include "platform/Services.h"
#include "platform/Globals.h"
#include "shell/frmSplash.h"

using Globals::WriteLogInfo;

namespace {
const QString File = QStringLiteral("File ");
}

void frmSplash::registrationAttempt(const QString &name, QString &appPath, QString &arguments)
{
    WriteLogInfo(File + name + QStringLiteral(" is NOT registered..."));
    WriteLogInfo(QStringLiteral("Attempting to register file ") + name + QStringLiteral(" as admin user..."));
    // Not awaited: the check looks again at once, as it always has.
    appPath = Globals::GetShortName(platform::app().programDir()) + QStringLiteral("/Regsvr32 /s") + name;
    arguments = QStringLiteral(" /admin");
    platform::shell().launch(QStringLiteral("runas"), appPath, arguments);
    if (Globals::IsDLLAvailable(name))
        return;
    WriteLogInfo(QStringLiteral("Registering file ") + name + QStringLiteral(" appeared to not be successful..."));
    WriteLogInfo(QStringLiteral("Try to Register file ") + name
                 + QStringLiteral(" Manually via a DOS prompt with administrator privileges"));
    WriteLogInfo(QStringLiteral("DOS command to manually Register this file is: 'regsvr32 ") + name + QLatin1Char('\''));
    WriteLogInfo(QStringLiteral("DOS command to manually Unregister this file is: 'regsvr32 /u ") + name
                 + QLatin1Char('\''));
    if (name == QLatin1String("wmp.dll")) {
        WriteLogInfo(QStringLiteral("Windows Media Player 'wmp.dll' file appears to not be installed..."));
        WriteLogInfo(QStringLiteral(
            "The easy solution: download and install latest version of Windows Media Player...'"));
    }
}

void frmSplash::checkRegistryFiles()
{
    QString appPath, arguments;
    Globals::Guard guard("checkRegistryFiles");
    guard.shape = [&](Globals::Report &report) {
        report.after = {QStringLiteral("strAppPath  = ") + appPath, QStringLiteral("strArguments = ") + arguments};
    };
    Globals::Guarded(guard, [&] {
        const QStringList names = QStringLiteral("SonicClickUltra.ocx,vbskpro2.ocx,RICHTX32.OCX,wmp.dll").split(',');
        for (const QString &name : names) {
            if (!platform::shell().componentInstalled(name)) {
                WriteLogInfo(File + name + QStringLiteral(" Does Not Exist..."));
                continue;
            }
            WriteLogInfo(File + name + QStringLiteral(" Exists..."));
            if (Globals::IsDLLAvailable(name))
                WriteLogInfo(File + name + QStringLiteral(" is registered..."));
            else
                registrationAttempt(name, appPath, arguments);
        }
        const QString tabs = QStringLiteral("TabCtl32.ocx");
        if (Globals::IsDLLAvailable(tabs))
            WriteLogInfo(File + tabs + QStringLiteral(" is registered..."));
        else
            registrationAttempt(tabs, appPath, arguments);
    });
}
