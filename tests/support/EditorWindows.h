#pragma once
// The question file editors, opened the way a host opens them: Edit on the
// main window, then a button of the chooser.
#include "files/frmEdit.h"
#include "files/frmEditQuestions.h"
#include "platform/Services.h"
#include "shell/frmTandrel.h"
#include "ui_frmEdit.h"
#include "ui_frmTandrel.h"
#include <QAbstractButton>

inline frmEdit *openChooser(frmTandrel &main)
{
    main.ui()->clkEdit->click();
    return qobject_cast<frmEdit *>(platform::loadedWindow(QStringLiteral("frmEdit")));
}

inline frmEditQuestions *openEditor(frmTandrel &main, bool matches)
{
    frmEdit *chooser = openChooser(main);
    (matches ? chooser->ui()->clkEditMatches : chooser->ui()->clkEditPhrases)->click();
    return qobject_cast<frmEditQuestions *>(
        platform::loadedWindow(matches ? QStringLiteral("frmEditMatches") : QStringLiteral("frmEditPhrases")));
}
