#include "script/list_recorder.h"

#include "script/texts.h"

namespace kolvane::script {

void ListRecorder::Toggle() {
  const bool on = button_.tag == 0;
  button_.tag = on ? 1 : 0;
  button_.image = on ? RecordButton::kOnImage : RecordButton::kOffImage;
}

void ListRecorder::AddToScript(std::string_view command) {
  if (!list_.AddToScript(command)) prompt_.ShowError(texts::kListFull);
}

}  // namespace kolvane::script
