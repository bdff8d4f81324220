#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "device/connection_form.h"

namespace kolvane::device {

/// The page "GPIB (IEEE488)".
class GpibPage final : public QWidget {
 public:
  GpibPage();

  void Show(const GpibFields& fields);
  GpibFields Fields() const;

 private:
  QComboBox* address_;
  QComboBox* timeout_;
  QLineEdit* eos_char_;
  QCheckBox* send_eoi_on_write_;
  QCheckBox* send_eoi_with_eos_;
  QCheckBox* stop_read_on_eos_;
  QCheckBox* repeat_addressing_;
};

/// The page "Druckerport".
class ParallelPage final : public QWidget {
 public:
  ParallelPage();

  void Show(const ParallelFields& fields);
  ParallelFields Fields() const;

 private:
  QComboBox* mode_;
  QComboBox* timeout_;
};

}  // namespace kolvane::device
