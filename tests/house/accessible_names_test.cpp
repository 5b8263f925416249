#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <algorithm>

#include "app/form2.h"
#include "articles/form26.h"
#include "articles/form27.h"
#include "exchange/form3.h"
#include "exchange/form33.h"
#include "exchange/form35.h"
#include "exchange/form_restore.h"
#include "exchange/start_page.h"
#include "heat/form25.h"
#include "heat/form29.h"
#include "heat/form31.h"
#include "heat/form5.h"
#include "market/form11.h"
#include "market/form21.h"
#include "market/form36.h"
#include "monitor/form4.h"
#include "monitor/form7.h"
#include "monitor/form8.h"
#include "research/form12.h"
#include "research/form24.h"
#include "research/form32.h"
#include "research/form37.h"
#include "tests/support/window_test.h"
#include "themes/form22.h"
#include "themes/form30.h"
#include "themes/form38.h"
#include "themes/form6.h"
#include "themes/review_window.h"
#include "themes/theme_page.h"
#include "utilities/diagnosis_window.h"
#include "utilities/form28.h"
#include "utilities/form34.h"

namespace guanchao {

static bool isNamed(const QWidget& control) {
    const bool showsWords =
        qobject_cast<const QAbstractButton*>(&control) || qobject_cast<const QLabel*>(&control);
    const QString words = showsWords ? control.property("text").toString() : QString();
    const QList<QLabel*> labels = control.window()->findChildren<QLabel*>();
    return !control.accessibleName().isEmpty() || !words.isEmpty() ||
           std::any_of(labels.begin(), labels.end(),
                       [&](const QLabel* label) { return label->buddy() == &control; });
}

// By object name and class.
static QStringList unnamedControls(const QWidget& window) {
    QStringList unnamed;
    for (const QWidget* it : window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const bool interactive =
            qobject_cast<const QAbstractButton*>(it) || (it->focusPolicy() & Qt::TabFocus);
        if (interactive && !isNamed(*it)) {
            unnamed << it->objectName() + u' ' + QString::fromLatin1(it->metaObject()->className());
        }
        // What these are made of is no control of its own.
        const bool whole =
            qobject_cast<const QMenuBar*>(it) || qobject_cast<const QComboBox*>(it) ||
            qobject_cast<const QAbstractSpinBox*>(it) ||
            (qobject_cast<const QAbstractScrollArea*>(it) && !qobject_cast<const QScrollArea*>(it));
        if (!whole && !it->isWindow()) {
            unnamed << unnamedControls(*it);
        }
    }
    return unnamed;
}

// Labels whose accessible name is told in place of their words.
static QStringList silencedLabels(const QWidget& window) {
    QStringList silenced;
    for (const QLabel* it : window.findChildren<QLabel*>()) {
        const QString name = it->accessibleName();
        if (!name.isEmpty() && name != it->text() && it->textFormat() != Qt::RichText) {
            silenced << it->objectName();
        }
    }
    return silenced;
}

template <typename Form>
static const QWidget* opened(Windows& windows) {
    windows.openAnew<Form>();
    return shownWindow<Form>();
}

using AccessibleNamesTest = WindowTest;

// The screen is one of 800x800, smaller than many windows would like.
TEST_F(AccessibleNamesTest, EveryControlOfEveryWindowHasOneAndEachWindowFitsItsScreen) {
    globals_.yingyongmulu = store_.folder();
    const Form2 main(environment_, windows_, desktop_);
    EXPECT_EQ(unnamedControls(main), QStringList());
    EXPECT_EQ(silencedLabels(main), QStringList());
    const QWidget* (*const windows[])(Windows&) = {
        opened<Form3>,     opened<Form4>,           opened<Form5>,       opened<Form6>,
        opened<Form7>,     opened<Form8>,           opened<Form11>,      opened<Form12>,
        opened<Form21>,    opened<Form22>,          opened<Form24>,      opened<Form25>,
        opened<Form26>,    opened<Form27>,          opened<Form28>,      opened<Form29>,
        opened<Form30>,    opened<Form31>,          opened<Form32>,      opened<Form33>,
        opened<Form34>,    opened<Form35>,          opened<Form36>,      opened<Form37>,
        opened<Form38>,    opened<ThemePage>,       opened<FormRestore>, opened<ReviewWindow>,
        opened<StartPage>, opened<DiagnosisWindow>,
    };
    for (const auto& opens : windows) {
        const QWidget* window = opens(windows_);
        ASSERT_NE(window, nullptr);
        const char* name = window->metaObject()->className();
        EXPECT_EQ(unnamedControls(*window), QStringList()) << name;
        EXPECT_EQ(silencedLabels(*window), QStringList()) << name;
        EXPECT_TRUE(window->screen()->availableGeometry().contains(window->geometry()))
            << name << ' ' << window->width() << 'x' << window->height();
        closeWindows();
        deleteClosedWindows();
    }
}

}  // namespace guanchao
