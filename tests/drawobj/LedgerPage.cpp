#include "drawobj/LedgerPage.h"

#include "drawobj/DrawObjLedger.h"

namespace {

std::string_view Word(laminate::Fate fate) {
  switch (fate) {
    case laminate::Fate::kept:
      return "kept";
    case laminate::Fate::normalised:
      return "normalised";
    case laminate::Fate::constant:
      return "constant";
    case laminate::Fate::dropped:
      return "dropped";
  }
  return "?";
}

std::string_view Sentence(laminate::ReadsBack reads) {
  switch (reads) {
    case laminate::ReadsBack::same:
      return "reads back";
    case laminate::ReadsBack::defaults:
      return "reads back as one with all its defaults";
    case laminate::ReadsBack::other:
      return "reads back as a shape of another class";
    case laminate::ReadsBack::unknownKeyword:
      return "does not read back: its keyword is unknown where it stands";
    case laminate::ReadsBack::raises:
      return "does not read back: the load ends for want of a value";
    case laminate::ReadsBack::within:
      return "";
  }
  return "?";
}

}  // namespace

std::string LedgerPage() {
  std::string s =
      "# What an export loses of the shapes\n"
      "\n"
      "The files that an export writes hold less than those that a load reads, and in parts something else. This page "
      "says\n"
      "for each field of each shape what is left of its value when the written text is read again:\n"
      "\n"
      "- kept: the same value;\n"
      "- normalised: the same value up to what the last column says;\n"
      "- constant: the text says the same whatever the value;\n"
      "- dropped: nothing; what is read again is the default.\n"
      "\n"
      "The page is made from the table in `src/drawobj/DrawObjLedger.cpp`, and a test holds the code against that "
      "table.\n"
      "After a change of the table the program `write_ledger` of the tests prints the page anew.\n";
  for (const laminate::LedgerClass& c : laminate::DrawObjLedgerClasses()) {
    s += "\n## " + std::string(c.className) + ": " + std::string(c.what) + "\n\n";
    const bool bVertex = c.className == "CBDvertexPt" || c.className == "CBDvertexArc" || c.className == "CBDfillet";
    if (c.byItself != laminate::ReadsBack::within) {
      if (c.byItself == c.inGeometry) {
        s += "Its text " + std::string(Sentence(c.byItself)) + ".\n";
      } else {
        s += "By itself its text " + std::string(Sentence(c.byItself)) + "; in a geometry it " +
             std::string(Sentence(c.inGeometry)) + ".\n";
      }
    }
    bool bFirst = true;
    for (const laminate::LedgerRow& row : laminate::DrawObjLedger()) {
      if (row.className != c.className) continue;
      if (bFirst) {
        if (c.byItself != laminate::ReadsBack::within) s += "\n";
        s += bVertex ? "| field | on a line | on an outline | |\n" : "| field | by itself | in a geometry | |\n";
        s += "|---|---|---|---|\n";
        bFirst = false;
      }
      const std::string field(row.field);
      s += "| " + (field.rfind("m_", 0) == 0 ? "`" + field + "`" : field) + " | " + std::string(Word(row.byItself)) +
           " | " + std::string(Word(row.inGeometry)) + " | " + std::string(row.rule) + " |\n";
    }
  }
  return s;
}
