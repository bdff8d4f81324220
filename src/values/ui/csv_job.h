#pragma once

#include <string>

#include "base/ui/sliced_job.h"
#include "values/row.h"
#include "values/store.h"

namespace kolvane::values {

/// A job that writes the first `rows` rows of the store to the CSV file `name`, whole or not at all. It is
/// cancelled, too, if the store is cleared.
base::SlicedJob* NewCsvJob(const Store& store, std::size_t rows, CsvForm form, const std::string& name,
                           QWidget* window);

}  // namespace kolvane::values
