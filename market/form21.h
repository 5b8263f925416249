// Form21, "分时行情": one stock live, with its two charts, five asks and bids and derived figures,
// and two index panels. Table dmb, for the candidates; the quote, chart, news and history services
// and read.ini. The rules are in LiveQuotes. Nothing waits for a service: the window works while it
// loads, says so where it does, and can stop it. It takes dangqiandm and dangqianjc over at its
// load.
#pragma once

#include <QCloseEvent>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QSet>
#include <QTimer>
#include <array>
#include <memory>

#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/picker_box.h"
#include "market/candle_panel.h"
#include "market/live_quotes.h"

namespace Ui {
class Form21;
}

namespace guanchao {

class Form21 : public QDialog, private QuoteScreen {
    Q_OBJECT

public:
    Form21(Environment& environment, Windows& windows);
    ~Form21() override;

public slots:
    // Esc ends what is loading before it closes the window.
    void reject() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    // Every other way closes it at once.
    void closeEvent(QCloseEvent* event) override { event->accept(); }

private:
    struct BookLabels {
        QLabel* price;
        QLabel* lots;
    };
    using Book = std::array<BookLabels, bookLevels>;

    Book bookLabels(const QString& side) const;
    void connectControls();
    void showBook(const Book& book, const std::array<BookLevel, bookLevels>& levels);

    void beginStock(const QString& dm) override;
    void showFundamentals(const FundamentalTexts& texts) override;
    void showChart(QuoteChart chart, const std::optional<QByteArray>& picture) override;
    void clearStock() override;
    void showStock(const StockPanel& panel) override;
    void showNoStock(const QString& words) override;
    void clearHomeIndex() override;
    void showHomeIndex(const HomeIndexPanel& panel) override;
    void showNoHomeIndex(const QString& words) override;
    void clearWorldIndex() override;
    void showWorldIndex(const WorldIndexPanel& panel) override;
    void setLoading(QuotePart part, bool loading) override;
    void setPolling(bool on, const QString& lack) override;
    void showState();
    void showPolledLine();
    QString shownName() const;
    void clearFigures();

    void Form_Load();
    void Command1_Click();
    void Combo1_Click();
    void Combo2_Click();
    void Picture1_MouseDown(Qt::MouseButton button, const QPoint& place);
    void F10资料_Click();
    void Timer1_Timer();
    void Timer2_Timer();

    Environment& environment_;
    Windows& windows_;
    std::unique_ptr<Ui::Form21> ui_;
    Book asks_;
    Book bids_;
    PickerBox* picker_ = nullptr;
    QString stock_;   // its code; whose charts are drawn
    QMenu kuaimenu_;  // 快捷菜单: on the chart of the day
    QTimer Timer1_;   // once after the load and after 刷新
    QTimer Timer2_;   // from the end of a poll to the next
    bool painted_ = false;
    QSet<QuotePart> loading_;
    QString polling_ = QStringLiteral("正在读取…");  // whether and when the figures come again

    LiveQuotes quotes_;
};

}  // namespace guanchao
