// The questions and answers that go to the user. Each call returns when the user has answered.
#pragma once

#include <QString>
#include <QStringList>

namespace guanchao {

inline const QString programName = QStringLiteral("观潮台");

class Dialogs {
public:
    virtual ~Dialogs() = default;

    // An answer or a refusal: exclamation icon and OK.
    virtual void tell(const QString& text, const QString& title = programName) = 0;

    // A question: information icon, OK and Cancel; true only for OK.
    virtual bool ask(const QString& text, const QString& title = programName) = 0;

    // The same where OK loses for good what the user has typed: Enter by itself answers Cancel.
    virtual bool askToLose(const QString& text, const QString& title = programName) = 0;

    // An input box; empty if the user cancels it.
    virtual QString input(const QString& prompt, const QString& title, const QString& text) = 0;

    // 打开文件: the path of an existing file that the user picks, beginning in `folder` with `file`
    // as its name; empty if the user picks none, or one whose path is longer than 255
    // characters. Callers then say "没有选择文件。".
    virtual QString dakaiwenjian(const QString& title, const QString& folder,
                                 const QString& file) = 0;

    // 保存文件: the path under which the user wants to save, beginning in `folder` with `file` as
    // its name; a file that is there is taken only after a question. `filters` are words with their
    // pattern, "文本文档(*.txt)", the first one chosen. Empty if the user picks none.
    virtual QString baocunwenjian(const QString& folder, const QString& file,
                                  const QStringList& filters) = 0;
};

}  // namespace guanchao
