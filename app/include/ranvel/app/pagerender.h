// The result pages drawn without a desktop: the command line asks for them
// as pictures. The application object is made offscreen when there is none.
#pragma once

#include <string>

class QWidget;

namespace ranvel {

struct DaySheet;

// Makes the offscreen application object if the process has none, with the
// program's fonts registered.
void EnsureOffscreenApplication();

// The cover page of the engine's last result as a PNG file. False, with the
// reason, when the file can't be written.
bool RenderCoverPng(const std::string& path, std::string& error);

// The report of the engine's last result as a PDF file, the same as the
// desktop's export writes: both result pages, built offscreen, through the
// same exporter. False, with the reason, when the file can't be written.
bool RenderReportPdf(const std::string& path, std::string& error);

// One page form (the day sheet's) as a PDF file through the same exporter.
bool ExportPagePdf(QWidget* page, const std::string& path, std::string& error);

// The sheet of a day as a PDF file, its page built offscreen.
bool RenderDaySheetPdf(const DaySheet& sheet, const std::string& path, std::string& error);

}  // namespace ranvel
