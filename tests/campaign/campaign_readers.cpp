// campaign_readers lists the readers: name, how often, in words.
// campaign_readers NAME SEED FIRST LAST FOLDER feeds one of them and writes a line for each harm.
// The input that is under way lies in FOLDER/NAME-SEED.input for who finds this process dead;
// SIGPROF ends it where one takes too long.
#include <sys/time.h>

#include <QApplication>
#include <algorithm>
#include <iostream>
#include <typeinfo>

#include "tests/campaign/garbler.h"
#include "tests/campaign/outside_reader.h"
#include "tests/support/files.h"

namespace guanchao {

namespace {

// Of the processor, so that a busy machine is no finding. It is a second without the sanitizers,
// which make the slowest inputs two to five times as slow.
constexpr itimerval tooLong = {{0, 0}, {3, 0}};

// Empty if the reader did what it may.
std::string harmOf(const OutsideReader& reader, const QByteArray& input) {
    try {
        reader.read(input);
    } catch (const Nonsense& it) {
        return it.what();
    } catch (const std::exception& it) {
        const bool mayBe = reader.mayRefuse && dynamic_cast<const std::runtime_error*>(&it);
        return mayBe ? std::string() : std::string(typeid(it).name()) + " " + it.what();
    }
    return {};
}

void feed(const OutsideReader& reader, quint32 seed, quint32 first, quint32 last,
          const QString& folder) {
    const QString name =
        folder + u'/' + QString::fromLatin1(reader.name) + u'-' + QString::number(seed);
    const Garbler garbler(reader.wellFormed, reader.name, seed);
    for (const QByteArray& input : reader.wellFormed) {
        harmOf(reader, input);  // what is made once is made before time is taken
    }
    for (quint32 round = first; round < last; ++round) {
        const QByteArray input = garbler.input(round);
        // In a file in memory, which outlives this process however it ends.
        writeFile(name + u".input"_s, QByteArray::number(round) + '\n' + input);
        setitimer(ITIMER_PROF, &tooLong, nullptr);
        std::string harm = harmOf(reader, input);
        if (!harm.empty()) {
            writeFile(name + u'-' + QString::number(round), input);
            std::ranges::replace(harm, '\n', ' ');
            std::cout << round << '\t' << harm << std::endl;
        }
    }
}

int run(const QStringList& arguments) {
    const QString folder = arguments.value(5, u"."_s);
    for (const OutsideReader& reader : pageReaders() + fileReaders(folder) + storeReaders()) {
        if (arguments.size() < 6) {
            std::cout << reader.name.constData() << '\t' << reader.times << '\t' << reader.what
                      << '\n';
        } else if (reader.name == arguments[1].toLatin1()) {
            feed(reader, arguments[2].toUInt(), arguments[3].toUInt(), arguments[4].toUInt(),
                 folder);
        }
    }
    return 0;
}

}  // namespace

}  // namespace guanchao

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    try {
        return guanchao::run(QCoreApplication::arguments());
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
