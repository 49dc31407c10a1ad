// The page designer: the colours of the result pages and of the chart, a
// sample of each, and named sets of them (themes). Nothing is stored until
// "Save"; a theme is kept or deleted at once.
#pragma once

#include <QDialog>
#include <memory>

#include "ranvel/data/themes.h"

namespace ranvel {

class frmColorEnv : public QDialog {
    Q_OBJECT
public:
    explicit frmColorEnv(QWidget* parent = nullptr);
    ~frmColorEnv() override;

    // The colours the swatches show now.
    PageColors Page() const;
    ChartColors Chart() const;

private:
    struct Impl;
    std::unique_ptr<Impl> d_;
};

}  // namespace ranvel
