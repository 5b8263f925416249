// The questions and answers that go to the user. Nothing here holds the caller: an answer is shown
// and stands by itself, a question is awaited with the stop token of its run, whose end takes the
// box along.
#pragma once

#include <QCoro/QCoroTask>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <stop_token>

namespace guanchao {

inline const QString programName = QStringLiteral("观潮台");

// What becomes of what the user has typed and not saved; `stay` goes back to it.
enum class Unsaved : std::uint8_t { save, discard, stay };

// What becomes of what stands already where a run writes; `leave` ends the run before it begins.
enum class Existing : std::uint8_t { add, replace, leave };

class Dialogs {
public:
    virtual ~Dialogs() = default;

    // An answer or a refusal: exclamation icon and OK. Returns at once; the window that told it may
    // close. Of several the next is shown when the one before it has been read.
    virtual void tell(const QString& text, const QString& title = programName) = 0;

    // The same with the information icon: what the user has asked for is done.
    virtual void tellDone(const QString& text) = 0;

    // A failure of an operation: one box for all, in which those that come while it stands are
    // counted. The windows beside it can be used.
    virtual void tellFailure(const QString& text) = 0;

    // A question: information icon, OK and Cancel; true only for OK.
    virtual QCoro::Task<bool> ask(std::stop_token stop, QString text,
                                  QString title = programName) = 0;

    // A question about what is not saved: 保存, 不保存 and 取消, which Enter by itself and Esc
    // answer.
    virtual QCoro::Task<Unsaved> askToSave(std::stop_token stop, QString text,
                                           QString title = programName) = 0;

    // A question about what stands already where a run writes: 添加, which Enter by itself answers,
    // 替换 and 取消, which Esc answers.
    virtual QCoro::Task<Existing> askToReplace(std::stop_token stop, QString text,
                                               QString title = programName) = 0;

    // An input box; empty if the user cancels it.
    virtual QCoro::Task<QString> input(std::stop_token stop, QString prompt, QString title,
                                       QString text) = 0;

    // 打开文件: the path of an existing file that the user picks, beginning in `folder` with `file`
    // as its name; empty if the user picks none, or one whose path is longer than 255
    // characters. Callers then say "没有选择文件。".
    virtual QCoro::Task<QString> dakaiwenjian(std::stop_token stop, QString title, QString folder,
                                              QString file) = 0;

    // The path of an existing folder that the user picks, beginning in `folder`; a file that is
    // picked stands for the folder it lies in. Empty if the user picks none.
    virtual QCoro::Task<QString> pickFolder(std::stop_token stop, QString title,
                                            QString folder) = 0;

    // 保存文件: the path under which the user wants to save, beginning in `folder` with `file` as
    // its name; a file that is there is taken only after a question. `filters` are words with their
    // pattern, "文本文档(*.txt)", the first one chosen. Empty if the user picks none.
    virtual QCoro::Task<QString> baocunwenjian(std::stop_token stop, QString folder, QString file,
                                               QStringList filters) = 0;
};

}  // namespace guanchao
