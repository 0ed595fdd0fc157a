#include "designdata/DesignDataTestSupport.h"

namespace {

// A part shows as {name,footprint,pin assign,stock info,class,package,[properties],[stock properties],[ports],[gates]},
// a port as {number,type,name,symbol pin}, a gate as {name,[port references],[properties]}, a pin assign as
// {uver,name,[instances],[ports],[properties]}, a function as {uver,name,[properties],[ports]}.
std::string ShowAll(const CPC_BD_OutClsGet& data) {
  std::string s;
  if (!data.m_pPrfPartArray->IsEmpty()) s += "parts " + Show(*data.m_pPrfPartArray);
  if (!data.m_pPrfPinAssignArray->IsEmpty()) s += "pinAssigns " + Show(*data.m_pPrfPinAssignArray);
  if (!data.m_pPrfFunctionArray->IsEmpty()) s += "functions " + Show(*data.m_pPrfFunctionArray);
  return s;
}

struct Case {
  const char* name;
  std::string_view text;
  const char* records;
};
void Check(const Case& c) {
  SCOPED_TRACE(c.name);
  EXPECT_EQ(ShowAll(*Loaded(Kind::parts, c.text)), c.records);
}

TEST(PartsFile, KeywordsThatCountEverywhere) {
  const Case kCases[] = {
      {"part", "(part \"A B\"\n)\n", "parts [{A B,,,,,,[],[],[],[]}]"},
      {"part without a name", "(part\n)\n", "parts [{,,,,,,[],[],[],[]}]"},
      {"part unquoted", "(part A)\n", "parts [{A),,,,,,[],[],[],[]}]"},
      {"part never closed", "(part A\n", "parts [{A,,,,,,[],[],[],[]}]"},
      {"part in a part", "(part A\n(part B\n(packageRef P)\n)\n(packageRef Q)\n",
       "parts [{A,,,,,,[],[],[],[]},{B,,,,,P),[],[],[],[]}]"},
      {"footprint", "(part A\n(footprintRef \"F\")\n)\n", "parts [{A,F,,,,,[],[],[],[]}]"},
      {"footprint unquoted keeps its bracket", "(part A\n(footprintRef F)\n)\n", "parts [{A,F),,,,,[],[],[],[]}]"},
      {"footprint without a value", "(part A\n(footprintRef F\n(footprintRef\n)\n", "parts [{A,,,,,,[],[],[],[]}]"},
      {"footprint before a part", "(footprintRef F\n(part A\n)\n", "parts [{A,,,,,,[],[],[],[]}]"},
      {"footprint behind a part", "(part A\n)\n(footprintRef F\n", "parts [{A,F,,,,,[],[],[],[]}]"},
      {"footprint in an interface", "(part A\n(interface\n(footprintRef F\n(port 1)\n)\n)\n",
       "parts [{A,F,,,,,[],[],[{1),,,0}],[]}]"},
      {"footprint in a gate is no port reference", "(part A\n(gateDef (gateName G\n(footprintRef F\n)\n)\n",
       "parts [{A,F,,,,,[],[],[],[{G,[],[]}]}]"},
      {"footprint in a function reaches the last part", "(part A\n)\n(function B\n(footprintRef F\n)\n",
       "parts [{A,F,,,,,[],[],[],[]}]functions [{1,B,[],[]}]"},
      {"pin assign in a part", "(part A\n(pinAssign Q\n(property k v\n)\n(packageRef P\n",
       "parts [{A,,,,,,[],[],[],[]}]pinAssigns [{1,Q,[],[],[k=v]}]"},
      {"function in an interface", "(part A\n(interface\n(function F\n(port 1 (symbPinId 2)\n)\n",
       "parts [{A,,,,,,[],[],[],[]}]functions [{1,F,[],[{,2,1}]}]"},
      {"function in a function instance", "(pinAssign Q\n(internal\n(funcInst (functionRef R)\n(function F\n)\n",
       "pinAssigns [{1,Q,[{R),[]}],[],[]}]functions [{1,F,[],[]}]"},
      {"part in a gate terminal", "(part A\n(gateDef (gateName G\n(gateTermDef\n(part B\n(packageRef P\n",
       "parts [{A,,,,,,[],[],[],[{G,[],[]}]},{B,,,,,P,[],[],[],[]}]"},
      {"part in a stock block", "(part A\n(stockInfo\n(part B\n(packageRef P\n",
       "parts [{A,,,,,,[],[],[],[]},{B,,,,,P,[],[],[],[]}]"},
      {"pin assign without a name", "(pinAssign\n)\n", "pinAssigns [{1,,[],[],[]}]"},
      {"function without a name", "(function\n)\n", "functions [{1,,[],[]}]"},
      {"keywords not whole", "(parts A\n(pinAssigns Q\n(functions F\n(footprintRefs F\n", ""},
      {"keywords not first", "x (part A\n", ""},
  };
  for (const Case& c : kCases) Check(c);
}

TEST(PartsFile, OutsideABlockAllElseIsSkipped) {
  for (const char* sz : {")", "(interface", "(gateDef", "(stockInfo", "(packageRef P", "(pinAssignRef Q",
                         "(partClass C", "(property k v", "(port 1", "(internal", "(funcInst", "(gateTermDef",
                         "(uver 1)", "x", "(Japanese_coding: sjis)"}) {
    const std::string line = sz;
    Check({sz, line + "\n", ""});
    const std::string behind = "(part A\n)\n" + line + "\n(port 1\n(property k v\n";
    Check({sz, behind, "parts [{A,,,,,,[],[],[],[]}]"});
  }
}

TEST(PartsFile, APart) {
  const Case kCases[] = {
      {"package", "(part A\n(packageRef \"P Q\")\n)\n", "parts [{A,,,,,P Q,[],[],[],[]}]"},
      {"package unquoted", "(part A\n(packageRef P)\n)\n", "parts [{A,,,,,P),[],[],[],[]}]"},
      {"package without a value", "(part A\n(packageRef P\n(packageRef\n)\n", "parts [{A,,,,,,[],[],[],[]}]"},
      {"pin assign", "(part A\n(pinAssignRef \"P Q\")\n)\n", "parts [{A,,P Q,,,,[],[],[],[]}]"},
      {"pin assign without a value", "(part A\n(pinAssignRef P\n(pinAssignRef\n)\n", "parts [{A,,,,,,[],[],[],[]}]"},
      {"class", "(part A\n(partClass IC)\n)\n", "parts [{A,,,,IC,,[],[],[],[]}]"},
      {"class quoted", "(part A\n(partClass \"IC)\")\n)\n", "parts [{A,,,,IC,,[],[],[],[]}]"},
      {"class without a value", "(part A\n(partClass IC)\n(partClass\n)\n", "parts [{A,,,,,,[],[],[],[]}]"},
      {"property", "(part A\n(property \"k k\" \"v v\")\n)\n", "parts [{A,,,,,,[k k=v v],[],[],[]}]"},
      {"property unquoted keeps its bracket", "(part A\n(property k v)\n)\n", "parts [{A,,,,,,[k=v)],[],[],[]}]"},
      {"property without a value", "(part A\n(property k\n)\n", "parts [{A,,,,,,[k=],[],[],[]}]"},
      {"property without anything", "(part A\n(property\n)\n", "parts [{A,,,,,,[=],[],[],[]}]"},
      {"stock info in a line", "(part A\n(stockInfo \"S\" (default))\n(partClass IC)\n)\n",
       "parts [{A,,,,IC,,[],[],[],[]}]"},
      {"stock info in a line with a blank behind opens a block",
       "(part A\n(stockInfo S) \n(partClass IC)\n)\n(partClass C)\n", "parts [{A,,,,C,,[],[],[],[]}]"},
      {"stock block", "(part A\n(stockInfo S\n(property \"k\" \"v\")\nx y\n(packageRef P\n)\n(partClass IC)\n)\n",
       "parts [{A,,,,IC,,[],[k=v],[],[]}]"},
      {"stock property without a value", "(part A\n(stockInfo\n(property\n)\n)\n", "parts [{A,,,,,,[],[=],[],[]}]"},
      {"closed", "(part A\n)\n(partClass IC)\n", "parts [{A,,,,,,[],[],[],[]}]"},
      {"interface", "(part A\n(interface\n)\n(partClass IC)\n)\n", "parts [{A,,,,IC,,[],[],[],[]}]"},
      {"two interfaces", "(part A\n(interface\n(port 1\n)\n(interface\n(port 2\n)\n)\n",
       "parts [{A,,,,,,[],[],[{1,,,0},{2,,,0}],[]}]"},
  };
  for (const Case& c : kCases) Check(c);
}

TEST(PartsFile, EveryOtherLineOfAPartIsAProperty) {
  const Case kCases[] = {
      {"uver", "(part A\n(uver 1)\n)\n", "parts [{A,,,,,,[uver=1],[],[],[]}]"},
      {"word", "(part A\npolarity both\n)\n", "parts [{A,,,,,,[polarity=both],[],[],[]}]"},
      {"no value", "(part A\n(polarity\n)\n", "parts [{A,,,,,,[polarity=],[],[],[]}]"},
      {"all brackets of the keyword go", "(part A\n((a(b( v)\n)\n", "parts [{A,,,,,,[ab=v],[],[],[]}]"},
      {"a bracket inside stays when none is in front", "(part A\na(b v)\n)\n", "parts [{A,,,,,,[a(b=v],[],[],[]}]"},
      {"all closing brackets of the value go", "(part A\n(k a)b))\n)\n", "parts [{A,,,,,,[k=ab],[],[],[]}]"},
      {"but not when none ends it", "(part A\n(k a)b\n)\n", "parts [{A,,,,,,[k=a)b],[],[],[]}]"},
      {"value in quotes", "(part A\n(k \"v w\")\n)\n", "parts [{A,,,,,,[k=v w],[],[],[]}]"},
      {"keyword in quotes", "(part A\n\"(k k\" v\n)\n", "parts [{A,,,,,,[k k=v],[],[],[]}]"},
      {"a port is no port here", "(part A\n(port 1)\n)\n", "parts [{A,,,,,,[port=1],[],[],[]}]"},
      {"two brackets are a keyword", "(part A\n))\n)\n", "parts [{A,,,,,,[))=],[],[],[]}]"},
      {"blocks of other records", "(part A\n(internal x\n(funcInst y\n)\n",
       "parts [{A,,,,,,[internal=x,funcInst=y],[],[],[]}]"},
  };
  for (const Case& c : kCases) Check(c);
}

TEST(PartsFile, PortsOfAPart) {
  const Case kCases[] = {
      {"name and type", "(part A\n(interface\n(port \"1\" (symbPinId 2) (portName \"N\") (portType INOUT))\n)\n)\n",
       "parts [{A,,,,,,[],[],[{1,INOUT,N,0}],[]}]"},
      {"unquoted name shifts the type out",
       "(part A\n(interface\n(port 1 (symbPinId 2) (portName N) (portType IN))\n)\n)\n",
       "parts [{A,,,,,,[],[],[{1,,N),0}],[]}]"},
      {"type only", "(part A\n(interface\n(port \"1\" (symbPinId 2) (portType INOUT))\n)\n)\n",
       "parts [{A,,,,,,[],[],[{1,INOUT,,0}],[]}]"},
      {"name only", "(part A\n(interface\n(port \"1\" (symbPinId 2) (portName \"N\"))\n)\n)\n",
       "parts [{A,,,,,,[],[],[{1,,N,0}],[]}]"},
      {"neither", "(part A\n(interface\n(port \"1\" (symbPinId 2))\n)\n)\n", "parts [{A,,,,,,[],[],[{1,,,0}],[]}]"},
      {"no number", "(part A\n(interface\n(port\n)\n)\n", "parts [{A,,,,,,[],[],[{,,,0}],[]}]"},
      {"the words may stand anywhere", "(part A\n(interface\n(port \"portName\" b c d N f g TportType)\n)\n)\n",
       "parts [{A,,,,,,[],[],[{portName,TportType,N,0}],[]}]"},
      {"type quoted", "(part A\n(interface\n(port \"1\" (symbPinId 2) (portType \"IN)\" ))\n)\n)\n",
       "parts [{A,,,,,,[],[],[{1,IN,,0}],[]}]"},
  };
  for (const Case& c : kCases) Check(c);
}

TEST(PartsFile, AnInterfaceOfAPart) {
  const Case kCases[] = {
      {"a property of several lines", "(part A\n(interface\n(property k\nv\n)\n(port 1\n)\n(partClass C)\n)\n",
       "parts [{A,,,,C,,[],[],[{1,,,0}],[]}]"},
      {"a property of one line keeps the interface open until the part closes",
       "(part A\n(interface\n(property k v)\n)\n(partClass C)\n)\n(partClass D)\n)\n", "parts [{A,,,,D,,[],[],[],[]}]"},
      {"two properties need one bracket",
       "(part A\n(interface\n(property k v)\n(property k v)\n)\n)\n(partClass C)\n)\n",
       "parts [{A,,,,C,,[],[],[],[]}]"},
      {"the flag waits for the next interface",
       "(part A\n(interface\n(property k v)\n(part B\n(interface\n)\n(port 1\n)\n(partClass C)\n)\n",
       "parts [{A,,,,,,[],[],[],[]},{B,,,,C,,[],[],[{1,,,0}],[]}]"},
      {"a bracket elsewhere leaves the flag alone",
       "(part A\n(interface\n(property k v)\n(part B\n(gateDef (gateName G\n)\n)\n(part C\n(interface\n)\n(port 1\n",
       "parts [{A,,,,,,[],[],[],[]},{B,,,,,,[],[],[],[{G,[],[]}]},{C,,,,,,[],[],[{1,,,0}],[]}]"},
      {"all else is skipped", "(part A\n(interface\n(packageRef P\n(gateDef G\n(stockInfo\nx y\n(interface\n)\n)\n",
       "parts [{A,,,,,,[],[],[],[]}]"},
  };
  for (const Case& c : kCases) Check(c);
}

TEST(PartsFile, AGate) {
  const Case kCases[] = {
      {"name", "(part A\n(gateDef (gateName \"G H\")\n)\n)\n", "parts [{A,,,,,,[],[],[],[{G H,[],[]}]}]"},
      {"name unquoted", "(part A\n(gateDef (gateName G)\n)\n)\n", "parts [{A,,,,,,[],[],[],[{G),[],[]}]}]"},
      {"no name", "(part A\n(gateDef\n)\n)\n", "parts [{A,,,,,,[],[],[],[{,[],[]}]}]"},
      {"property", "(part A\n(gateDef a G\n(property \"k\" \"v\")\n(property\n)\n)\n",
       "parts [{A,,,,,,[],[],[],[{G,[],[k=v,=]}]}]"},
      {"other lines are port references", "(part A\n(gateDef a G\n(x (y \"1\"))\nz\n(packageRef a P\n)\n)\n",
       "parts [{A,,,,,,[],[],[],[{G,[1,,P],[]}]}]"},
      {"terminal in a line", "(part A\n(gateDef a G\n(gateTermDef (portRef \"1\"))\nx y 2\n)\n)\n",
       "parts [{A,,,,,,[],[],[],[{G,[2],[]}]}]"},
      {"terminal in a line with a blank behind opens a block",
       "(part A\n(gateDef a G\n(gateTermDef (portRef \"1\")) \nx y 2\n)\nx y 3\n)\n)\n",
       "parts [{A,,,,,,[],[],[],[{G,[3],[]}]}]"},
      {"terminal of one bracket opens a block",
       "(part A\n(gateDef a G\n(gateTermDef x)\n(property k v\n)\nx y 3\n)\n)\n",
       "parts [{A,,,,,,[],[],[],[{G,[3],[]}]}]"},
      {"several gates", "(part A\n(gateDef a G\nx y 1\n)\n(gateDef a H\nx y 2\n)\n(partClass C)\n)\n",
       "parts [{A,,,,C,,[],[],[],[{G,[1],[]},{H,[2],[]}]}]"},
      {"blocks of a part mean nothing inside", "(part A\n(gateDef a G\n(interface a b\n(gateDef a c\n)\n)\n",
       "parts [{A,,,,,,[],[],[],[{G,[b,c],[]}]}]"},
  };
  for (const Case& c : kCases) Check(c);
}

TEST(PartsFile, APinAssign) {
  const Case kCases[] = {
      {"property", "(pinAssign Q\n(property \"k\" \"v\")\n(property\n)\n", "pinAssigns [{1,Q,[],[],[k=v,=]}]"},
      {"uver is skipped", "(pinAssign Q\n(uver 5)\nx y\n(port 1\n)\n", "pinAssigns [{1,Q,[],[],[]}]"},
      {"closed", "(pinAssign Q\n)\n(property k v\n", "pinAssigns [{1,Q,[],[],[]}]"},
      // A port shows as {type,name,pin,number}.
      {"port unquoted", "(pinAssign Q\n(interface\n(port \"1\" (pinId 7) (portName N) (portType IN))\n)\n)\n",
       "pinAssigns [{1,Q,[],[{IN)),N),7,1}],[]}]"},
      {"port with a quoted name",
       "(pinAssign Q\n(interface\n(port \"1\" (pinId 7) (portName \"N\") (portType IN))\n)\n)\n",
       "pinAssigns [{1,Q,[],[{(portType,N,7,1}],[]}]"},
      {"port without anything", "(pinAssign Q\n(interface\n(port\n)\n)\n", "pinAssigns [{1,Q,[],[{,,0,}],[]}]"},
      {"interface closed", "(pinAssign Q\n(interface\n)\n(property k v\n)\n", "pinAssigns [{1,Q,[],[],[k=v]}]"},
      {"all else in an interface is skipped", "(pinAssign Q\n(interface\n(property k v\n(internal\nx\n)\n)\n",
       "pinAssigns [{1,Q,[],[],[]}]"},
      // An instance shows as {function,[{match,number}]}.
      {"instance", "(pinAssign Q\n(internal\n(funcInst (functionRef \"F\")\n(port \"1\" (match \"2\"))\n)\n)\n)\n",
       "pinAssigns [{1,Q,[{F,[{2,1}]}],[],[]}]"},
      {"instance unquoted", "(pinAssign Q\n(internal\n(funcInst (functionRef F)\n(port 1 (match 2))\n)\n)\n)\n",
       "pinAssigns [{1,Q,[{F),[{2)),1}]}],[],[]}]"},
      {"instance without anything", "(pinAssign Q\n(internal\n(funcInst\n(port\n)\n)\n)\n",
       "pinAssigns [{1,Q,[{,[{,}]}],[],[]}]"},
      {"several instances",
       "(pinAssign Q\n(internal\n(funcInst a F\n(port 1 m 2\n)\n(funcInst a G\n(port 3 m 4\n)\n)\n",
       "pinAssigns [{1,Q,[{F,[{2,1}]},{G,[{4,3}]}],[],[]}]"},
      {"all else in an internal block is skipped",
       "(pinAssign Q\n(internal\n(port 1\n(property k v\nx\n)\n(property k v\n", "pinAssigns [{1,Q,[],[],[k=v]}]"},
      {"all else in an instance is skipped",
       "(pinAssign Q\n(internal\n(funcInst a F\n(property k v\n(funcInst b G\nx\n)\n)\n(property a b\n",
       "pinAssigns [{1,Q,[{F,[]}],[],[a=b]}]"},
  };
  for (const Case& c : kCases) Check(c);
}

TEST(PartsFile, AFunction) {
  const Case kCases[] = {
      // A port shows as {type,symbol pin,number}.
      {"port", "(function F\n(port \"1\" (symbPinId 2) (portType \"IN\" ))\n)\n", "functions [{1,F,[],[{IN,2,1}]}]"},
      {"port unquoted keeps its brackets", "(function F\n(port \"1\" (symbPinId 2) (portType IN))\n)\n",
       "functions [{1,F,[],[{IN)),2,1}]}]"},
      {"port without anything", "(function F\n(port\n)\n", "functions [{1,F,[],[{,0,}]}]"},
      {"property", "(function F\n(property \"k\" \"v\")\n(property\n)\n", "functions [{1,F,[k=v,=],[]}]"},
      {"uver is skipped", "(function F\n(uver 5)\nx\n(internal\n)\n", "functions [{1,F,[],[]}]"},
      {"an interface closes the function",
       "(function F\n(property a b\n(interface\n(port 1 a 2 b T\n)\n(property c d\n(port 2\n)\n",
       "functions [{1,F,[a=b],[{T,2,1}]}]"},
  };
  for (const Case& c : kCases) Check(c);
}

TEST(PartsFile, DefaultsOfRecords) {
  EXPECT_EQ(Show(CVRXoutPrfPart()), "{,,,,,,[],[],[],[]}");
  EXPECT_EQ(Show(CVRXoutPrfPartPort()), "{,,,0}");
  EXPECT_EQ(Show(CVRXoutPrfPartGateDef()), "{,[],[]}");
  EXPECT_EQ(Show(CVRXoutPrfFunction()), "{1,,[],[]}");
  EXPECT_EQ(Show(CVRXoutPrfFunctionPort()), "{,0,}");
  EXPECT_EQ(Show(CVRXoutPrfPinAssign()), "{1,,[],[],[]}");
  EXPECT_EQ(Show(CVRXoutPrfPinAssignPort()), "{,,-1,}");
  EXPECT_EQ(Show(CVRXoutPrfPinAssignFuncInst()), "{,[]}");
  EXPECT_EQ(Show(CVRXoutPrfPinAssignFuncInstPort()), "{,}");
}

}  // namespace
