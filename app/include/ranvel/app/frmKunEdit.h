// The Kundli Designer: the chart style, the chart's colours and line
// widths, and a sample chart that shows each change at once. Only "Save"
// stores them.
#pragma once

#include <QDialog>
#include <memory>

#include "ranvel/data/themes.h"

namespace ranvel {

class frmKunEdit : public QDialog {
    Q_OBJECT
public:
    explicit frmKunEdit(QWidget* parent = nullptr);
    ~frmKunEdit() override;

    // The colours and widths the dialog shows now.
    ChartColors Chart() const;

signals:
    // The style and the chart's colours were saved: charts drawn before
    // show the old ones.
    void Saved();

private:
    struct Impl;
    std::unique_ptr<Impl> d_;
};

}  // namespace ranvel
