#include "frame/practice_band.h"

#include "services/practice.h"

namespace guanchao {

void showPractice(QLabel& band, const Services& services) {
    const QString words = practiceWords(services);
    if (words != band.text()) {
        band.setText(words);
    }
    band.setVisible(!words.isEmpty());
}

}  // namespace guanchao
