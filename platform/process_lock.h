// A lock on a file that ends with its process, however that ends: no name of a process or of a
// computer is left behind that could bar the way later.
#pragma once

#include <QFile>
#include <QString>

namespace guanchao {

// In the application folder: held as long as the program runs there.
inline const QString lockOfProgram = QStringLiteral("guanchaotai.lock");

class ProcessLock {
public:
    // The file is made where it is missing and stays there.
    explicit ProcessLock(const QString& path) : file_(path) {}

    enum class Outcome { taken, held, notWritable };

    // Held: another has it. Taken once, it is kept as long as this object lives.
    Outcome take();

    QString path() const { return file_.fileName(); }

private:
    QFile file_;
};

}  // namespace guanchao
