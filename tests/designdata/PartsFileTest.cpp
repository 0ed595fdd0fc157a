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
      {"keywords of other case", "(Part A\n(PINASSIGN Q\n(Function F\n(footprintref F\n", ""},
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
      {"class with a bracket inside", "(part A\n(partClass I)C))\n)\n", "parts [{A,,,,I)C,,[],[],[],[]}]"},
      {"class without a value", "(part A\n(partClass IC)\n(partClass\n)\n", "parts [{A,,,,,,[],[],[],[]}]"},
      {"property", "(part A\n(property \"k k\" \"v v\")\n)\n", "parts [{A,,,,,,[k k=v v],[],[],[]}]"},
      {"property unquoted keeps its bracket", "(part A\n(property k v)\n)\n", "parts [{A,,,,,,[k=v)],[],[],[]}]"},
      {"property in brackets", "(part A\n(property \"k\" \"(v)\")\n)\n", "parts [{A,,,,,,[k=(v)],[],[],[]}]"},
      {"property without a value", "(part A\n(property k\n)\n", "parts [{A,,,,,,[k=],[],[],[]}]"},
      {"property without anything", "(part A\n(property\n)\n", "parts [{A,,,,,,[=],[],[],[]}]"},
      {"stock info in a line", "(part A\n(stockInfo \"S\" (default))\n(partClass IC)\n)\n",
       "parts [{A,,,,IC,,[],[],[],[]}]"},
      {"stock info in a line with a blank behind opens a block",
       "(part A\n(stockInfo S) \n(partClass IC)\n)\n(partClass C)\n", "parts [{A,,,,C,,[],[],[],[]}]"},
      {"stock info in a line that ends in a quoted bracket opens a block",
       "(part A\n(stockInfo \"S)\"\n(partClass C)\n)\n(partClass D)\n", "parts [{A,,,,D,,[],[],[],[]}]"},
      {"stock info of one bracket too few is a line", "(part A\n(stockInfo (a)\n(partClass C)\n",
       "parts [{A,,,,C,,[],[],[],[]}]"},
      {"stock block", "(part A\n(stockInfo S\n(property \"k\" \"v\")\nx y\n(packageRef P\n)\n(partClass IC)\n)\n",
       "parts [{A,,,,IC,,[],[k=v],[],[]}]"},
      {"stock property without a value", "(part A\n(stockInfo\n(property\n)\n)\n", "parts [{A,,,,,,[],[=],[],[]}]"},
      {"closed", "(part A\n)\n(partClass IC)\n", "parts [{A,,,,,,[],[],[],[]}]"},
      {"closed with text behind", "(part A\n) x\n(partClass C\n", "parts [{A,,,,,,[],[],[],[]}]"},
      {"not closed by a bracket on its opening line", "(part A)\n(partClass C\n", "parts [{A),,,,C,,[],[],[],[]}]"},
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
      {"only closing brackets go from a value", "(part A\n(k (a))\n)\n", "parts [{A,,,,,,[k=(a],[],[],[]}]"},
      {"those of a quoted value too", "(part A\n(k \"v)w)\")\n)\n", "parts [{A,,,,,,[k=vw],[],[],[]}]"},
      {"only opening brackets go from a keyword", "(part A\n(k)\n)\n", "parts [{A,,,,,,[k)=],[],[],[]}]"},
      {"a bracket alone", "(part A\n( k v)\n)\n", "parts [{A,,,,,,[=k],[],[],[]}]"},
      {"an empty keyword", "(part A\n\"\" x\n)\n", "parts [{A,,,,,,[=x],[],[],[]}]"},
      {"one value only", "(part A\n(k v w)\n)\n", "parts [{A,,,,,,[k=v],[],[],[]}]"},
      {"an interface in a line", "(part A\n(interface)\n(port 1\n)\n",
       "parts [{A,,,,,,[interface)=,port=1],[],[],[]}]"},
      {"a keyword of other case", "(part A\n(partclass C)\n)\n", "parts [{A,,,,,,[partclass=C],[],[],[]}]"},
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
      {"a name and another word", "(part A\n(interface\n(port \"1\" (symbPinId 2) (portName \"N\") (kind IN))\n)\n)\n",
       "parts [{A,,,,,,[],[],[{1,,N,0}],[]}]"},
      {"other words", "(part A\n(interface\n(port \"1\" (symbPinId 2) (name \"N\") (kind IN))\n)\n)\n",
       "parts [{A,,,,,,[],[],[{1,,,0}],[]}]"},
      {"the type in front of the name",
       "(part A\n(interface\n(port \"1\" (symbPinId 2) (portType IN) (portName \"N\"))\n)\n)\n",
       "parts [{A,,,,,,[],[],[{1,,IN),0}],[]}]"},
      {"brackets inside the type stay", "(part A\n(interface\n(port 1 a 2 portType A)B))\n)\n)\n",
       "parts [{A,,,,,,[],[],[{1,A)B,,0}],[]}]"},
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
      {"terminal that ends in quoted brackets opens a block",
       "(part A\n(gateDef a G\n(gateTermDef \"1))\"\nx y 2\n)\nx y 3\n)\n)\n",
       "parts [{A,,,,,,[],[],[],[{G,[3],[]}]}]"},
      {"not closed by the brackets on its opening line",
       "(part A\n(gateDef (gateName \"G\"))\n(packageRef a P\n)\n(packageRef Q\n)\n",
       "parts [{A,,,,,Q,[],[],[],[{G,[P],[]}]}]"},
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
      {"two brackets close no interface", "(pinAssign Q\n(interface\n))\n(port 1\n",
       "pinAssigns [{1,Q,[],[{,,0,1}],[]}]"},
      {"an instance is not closed by the brackets on its opening line",
       "(pinAssign Q\n(internal\n(funcInst (functionRef \"F\"))\n(port 1 m 2\n)\n)\n(property k v\n",
       "pinAssigns [{1,Q,[{F,[{2,1}]}],[],[k=v]}]"},
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

// Each block with a line that means something in it, and what stands there while it is open.
struct Block {
  const char* opening;
  const char* line;
  std::string_view where;
  std::string_view notClosed;
};
constexpr Block kBlocks[] = {
    {"(part A\n", "(partClass C\n", "", "part \"A\""},
    {"(part A\n(interface\n", "(port 1\n", "inside a part's interface", "interface of part \"A\""},
    {"(part A\n(gateDef a G\n", "x y 1\n", "", "gate of part \"A\""},
    {"(part A\n(gateDef a G\n(gateTermDef x\n", ")\nx y 1\n", "inside a gate terminal", "gate terminal of part \"A\""},
    {"(part A\n(stockInfo x\n", "(property k v\n", "inside a stock block", "stock block of part \"A\""},
    {"(pinAssign A\n", "(property k v\n", "inside a pin assign", "pin assign \"A\""},
    {"(pinAssign A\n(interface\n", "(port 1\n", "inside a pin assign's interface", "interface of pin assign \"A\""},
    {"(pinAssign A\n(internal\n", "(funcInst a F\n", "inside an internal block", "internal block of pin assign \"A\""},
    {"(pinAssign A\n(internal\n(funcInst a F\n", "(port 1 m 2\n", "inside a function instance",
     "function instance of pin assign \"A\""},
    {"(function A\n", "(port 1\n", "inside a function", "function \"A\""},
};

TEST(PartsFile, NewRecordsAndFootprintsCountInEveryBlock) {
  for (const Block& block : kBlocks) {
    SCOPED_TRACE(block.opening);
    const std::string before = "(part X\n)\n" + std::string(block.opening);
    const auto pPart = Loaded(Kind::parts, before + "(part NEW\n(packageRef P\n");
    EXPECT_EQ(Show(*pPart->m_pPrfPartArray->GetLastElement()), "{NEW,,,,,P,[],[],[],[]}");
    const auto pPinAssign = Loaded(Kind::parts, before + "(pinAssign NEW\n(property k v\n");
    EXPECT_EQ(Show(*pPinAssign->m_pPrfPinAssignArray->GetLastElement()), "{1,NEW,[],[],[k=v]}");
    const auto pFunction = Loaded(Kind::parts, before + "(function NEW\n(port 1\n");
    EXPECT_EQ(Show(*pFunction->m_pPrfFunctionArray->GetLastElement()), "{1,NEW,[],[{,0,1}]}");
    // A footprint goes to the last part, and the block goes on.
    const std::string without = ShowAll(*Loaded(Kind::parts, before + block.line));
    EXPECT_NE(ShowAll(*Loaded(Kind::parts, before)), without);
    const auto pData = Loaded(Kind::parts, before + "(footprintRef F\n" + block.line);
    CVRXoutPrfPart& part = *pData->m_pPrfPartArray->GetLastElement();
    EXPECT_EQ(part.m_sFootprintRef, "F");
    part.m_sFootprintRef.Empty();
    EXPECT_EQ(ShowAll(*pData), without);
  }
}

TEST(PartsFile, PortsHaveAWholeKeyword) {
  for (const Block& block : kBlocks) {
    if (std::string_view(block.line).substr(0, 5) != "(port") continue;
    const std::string empty = ShowAll(*Loaded(Kind::parts, block.opening));
    for (const char* sz : {"(ports 1\n", "(port) 1\n", "(Port 1\n", "x (port 1\n"}) {
      EXPECT_EQ(ShowAll(*Loaded(Kind::parts, std::string(block.opening) + sz)), empty) << block.opening << sz;
    }
  }
}

TEST(PartsFile, EachLoadStartsOutside) {
  CPC_BD_OutClsGet data;
  Load(data, Kind::parts, "(part A\n(interface\n(property k\n");
  Load(data, Kind::parts, "(footprintRef F\n(packageRef P\n(port 1\n(part B\n(interface\n)\n(partClass C\n");
  EXPECT_EQ(ShowAll(data), "parts [{A,,,,,,[],[],[],[]},{B,,,,C,,[],[],[],[]}]");
}

TEST(PartsFile, RemarksNameTheBlock) {
  for (const Block& block : kBlocks) {
    SCOPED_TRACE(block.opening);
    const bool bTakesAll = block.where.empty();
    const std::string opening = block.opening;
    const auto nLine = std::to_string(std::count(opening.begin(), opening.end(), '\n') + 1);
    const std::string closing =
        "file:1:3: warning: " + std::string(block.notClosed) + " is not closed: what was read of it is kept";
    std::vector<std::string> expected;
    if (!bTakesAll) {
      expected.push_back("file:" + nLine + ":2: note: \"@\" means nothing " + std::string(block.where) +
                         ": the line is skipped");
    }
    expected.push_back(closing);
    EXPECT_EQ(RemarksOf(Kind::parts, "  " + opening + " @\n"), expected);
  }
}

}  // namespace
