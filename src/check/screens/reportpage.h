#pragma once

#include "base/grid.h"
#include "check/readreport.h"

#include <QWidget>

class QLabel;

namespace kervan {

class GridView;

/// The page "Okuma": why lines and cells of the source gave nothing, and how many for each reason.
class ReportPage : public QWidget
{
    Q_OBJECT

public:
    explicit ReportPage(ReadReport &report, QWidget *parent = nullptr);

Q_SIGNALS:
    void titleChanged(const QString &title);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void show();
    void fill();

    ReadReport &m_report;
    Grid m_rows;
    GridView *m_view;
    QLabel *m_counts;
    bool m_isStale = true;
};

} // namespace kervan
