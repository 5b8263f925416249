#include "tests/house/accessible_names.h"

#include <gtest/gtest.h>

#include "app/form2.h"
#include "articles/form26.h"
#include "articles/form27.h"
#include "exchange/form3.h"
#include "exchange/form_restore.h"
#include "heat/form25.h"
#include "heat/form29.h"
#include "heat/form31.h"
#include "heat/form5.h"
#include "market/form11.h"
#include "market/form21.h"
#include "monitor/form4.h"
#include "monitor/form7.h"
#include "monitor/form8.h"
#include "research/form12.h"
#include "research/form24.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_environment.h"
#include "themes/form22.h"
#include "themes/form30.h"
#include "themes/form6.h"
#include "utilities/form28.h"

namespace guanchao {

namespace {

template <typename Form>
const QWidget* opened(Windows& windows) {
    windows.openAnew<Form>();
    return shownWindow<Form>();
}

}  // namespace

class AccessibleNamesTest : public ::testing::Test, protected TestEnvironment {};

TEST_F(AccessibleNamesTest, EveryControlOfEveryWindowHasOne) {
    globals_.yingyongmulu = store_.folder();
    const Form2 main(environment_, windows_, desktop_);
    EXPECT_EQ(unnamedControls(main), QStringList());
    const struct {
        const char* name;
        const QWidget* (*open)(Windows&);
    } windows[] = {
        {"Form3", opened<Form3>},
        {"Form4", opened<Form4>},
        {"Form5", opened<Form5>},
        {"Form6", opened<Form6>},
        {"Form7", opened<Form7>},
        {"Form8", opened<Form8>},
        {"Form11", opened<Form11>},
        {"Form12", opened<Form12>},
        {"Form21", opened<Form21>},
        {"Form22", opened<Form22>},
        {"Form24", opened<Form24>},
        {"Form25", opened<Form25>},
        {"Form26", opened<Form26>},
        {"Form27", opened<Form27>},
        {"Form28", opened<Form28>},
        {"Form29", opened<Form29>},
        {"Form30", opened<Form30>},
        {"Form31", opened<Form31>},
        {"FormRestore", opened<FormRestore>},
    };
    for (const auto& it : windows) {
        const QWidget* window = it.open(windows_);
        ASSERT_NE(window, nullptr) << it.name;
        EXPECT_EQ(unnamedControls(*window), QStringList()) << it.name;
        closeWindows();
        deleteClosedWindows();
    }
}

}  // namespace guanchao
