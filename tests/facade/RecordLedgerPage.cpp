#include "facade/RecordLedgerPage.h"

#include "facade/ExportLosses.h"

std::string RecordLedgerPage() {
  std::string s =
      "# What an export loses of the records\n"
      "\n"
      "What `ledger.md` says of the shapes this page says of everything else: for each field of each class, what is "
      "left\n"
      "of its value when the files that an export wrote are read again, in the same four words. What the files keep "
      "for\n"
      "others but no load reads is marked so. A value that is that of a new object is no loss where the files have\n"
      "nothing of it. `laminate export` tells what is lost of a design.\n"
      "\n"
      "The page is made from the tables in `src/facade`; the program `write_record_ledger` of the tests prints it "
      "anew.\n";
  std::string_view className;
  for (const laminate::RecordLedgerLine& line : laminate::RecordLedger()) {
    if (line.className != className) {
      className = line.className;
      s += "\n## " + std::string(className) + "\n\n| field | | |\n|---|---|---|\n";
    }
    s += "| `" + std::string(line.field) + "` | " + std::string(ToText(line.fate)) + " | " + std::string(line.note) +
         " |\n";
  }
  return s;
}
