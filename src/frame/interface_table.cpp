// The interface of Cl_KIV as automation clients see it, in member order,
// with the enumerations, the record and the constants it publishes.
#include "frame/dispatch.hpp"

#include <memory>

namespace kiv {
namespace {

using C = Cl_KIV;

const Variant kNoText = Variant(u"");
const Variant kPipe = Variant(u"|");
const Variant kFalse = Variant(false);
const Variant kCrLf = Variant(u"\r\n");
Variant I(int v) { return Variant(static_cast<Integer>(v)); }
Variant L(int v) { return Variant(static_cast<Long>(v)); }
Variant D(double v) { return Variant(v); }

std::vector<Member> BuildTable() {
    return {
        // The component object
        Property<&C::DlK_TimMask>("DlK_TimMask", "Object slot for the host's time-mask control."),
        Property<&C::DlK_DatMask>("DlK_DatMask", "Object slot for the host's date-mask control."),

        // Padding and alignment
        Method<&C::AllineaDxSpazi>("AllineaDxSpazi", "Right-aligns fill with blanks in the width of Record, in place.",
                                   ByRef("Record"), ByRef("fill")),
        Method<&C::AllineaDxZeri>("AllineaDxZeri", "Right-aligns fill with zeros in LenCod characters.",
                                  ByRef("LenCod"), ByRef("fill")),
        Method<&C::AllineaSinZeri>("AllineaSinZeri", "Appends Pos zeros to stringa, in place.", ByRef("stringa"),
                                   ByRef("Pos")),
        Method<&C::PoniADes>("PoniADes", "Right-aligns the trimmed text in N characters, cutting its beginning.",
                             ByRef("S"), ByRef("N")),
        Method<&C::PoniASin>("PoniASin", "Left-aligns the trimmed text in N characters, cutting its end.",
                             ByRef("S"), ByRef("N")),
        Method<&C::Allunga>("Allunga", "Lengthens S to B characters with copies of C; never cuts.", ByVal("S"),
                            ByRef("B"), OptRef("C", Variant(u" "))),
        Method<&C::MettiADes>("MettiADes", "Right-aligns S in N characters with an optional filler; S becomes text.",
                              ByRef("S"), ByRef("N"), OptRef("Filler", kNoText)),
        Method<&C::MettiASin>("MettiASin", "Left-aligns S in N characters with an optional filler; S becomes text.",
                              ByRef("S"), ByRef("N"), OptRef("Filler", kNoText)),
        Method<&C::MettiInCentro>("MettiInCentro", "Centres S in N characters; a longer text is returned whole.",
                                  ByRef("S"), ByRef("N"), OptRef("Filler", kNoText), OptRef("NoTrim", kFalse)),
        Method<&C::Cntr>("Cntr", "Centres S in N characters (MettiInCentro without filler).", ByRef("S"), ByRef("N")),
        Method<&C::Repl>("Repl", "Repeats Frase Volte times.", ByVal("Volte"), ByVal("Frase")),
        Method<&C::StrInsert>("StrInsert", "Overwrites S_Long from C_Pos with S_Short, keeping its length.",
                              ByRef("S_Long"), ByRef("S_Short"), ByRef("C_Pos"), OptRef("B_Trim", kFalse)),
        Method<&C::STR_Trunc>("STR_Trunc", "Cuts NCharToCut characters off the end of S.", ByRef("S"),
                              ByRef("NCharToCut")),

        // Character substitution and cleaning
        Method<&C::SostChar>("SostChar", "Replaces each character of C1 (case-blind) by the one at its place in C2.",
                             ByRef("S"), ByRef("C1"), ByRef("C2")),
        Method<&C::SostWord>("SostWord", "Replaces occurrences of Str_Find by Str_Repl from StartOccur, at most MaxOccur.",
                             ByRef("Str_0"), ByRef("Str_Find"), ByRef("Str_Repl"), OptVal("StartOccur", I(1)),
                             OptRef("MaxOccur", I(0))),
        Method<&C::SostLoChar>("SostLoChar", "Replaces control characters (in effect only code 31) by Nuovo.",
                               ByRef("S"), OptRef("Nuovo", Variant(u"."))),
        Method<&C::SostHiChar>("SostHiChar", "Replaces high characters (in effect only code 255) by Nuovo.",
                               ByRef("S"), OptRef("Nuovo", Variant(u"."))),
        Method<&C::Apo_No>("Apo_No", "Turns every apostrophe into a backquote.", ByVal("S")),
        Method<&C::Apo_Yes>("Apo_Yes", "Turns every backquote back into an apostrophe.", ByVal("S")),
        Method<&C::Apo_Fix>("Apo_Fix", "Doubles every apostrophe (NON Usare !!!).", ByVal("S")),
        Method<&C::Apo_Dup>("Apo_Dup", "Doubles apostrophes for quoted statements.", ByRef("S")),
        Method<&C::NoChar>("NoChar", "Removes every occurrence of the character Caz.", ByVal("S"), ByRef("Caz")),
        Method<&C::NoPunt>("NoPunt", "Removes every point.", ByVal("S")),
        Method<&C::NoTrail>("NoTrail", "Trims a (in place) and cuts it at its first NUL.", ByRef("a")),
        Method<&C::CompSpac>("CompSpac", "Trims and compresses runs of blanks to one.", ByRef("a")),
        Method<&C::FixAmper>("FixAmper", "Doubles every ampersand for captions.", ByRef("Si")),
        Method<&C::Capital>("Capital", "First character in capitals, the rest in small letters.", ByRef("S"),
                            OptRef("SingleWords", kFalse)),
        Method<&C::UpAscii>("UpAscii", "Code of a small letter a-z lowered by 32.", ByVal("a")),
        Method<&C::LoAscii>("LoAscii", "Code 65 raised to 97; every other code unchanged.", ByVal("a")),
        Method<&C::SoloCifre>("SoloCifre", "The digits of a text.", ByRef("T_Str")),
        Method<&C::Lettere>("Lettere", "26 places showing which letters a text uses.", ByRef("S_0")),
        Method<&C::Numeri>("Numeri", "10 places showing which digits a text uses.", ByRef("S_0")),
        Method<&C::LastWord>("LastWord", "The last blank-separated word of a text.", ByRef("Lin")),
        Method<&C::InvStr>("InvStr", "The text read from right to left.", ByRef("S")),

        // Words, justification and row splitting
        Method<&C::ParseWord>("ParseWord", "Splits a text into words and their positions; returns the count.",
                              ByRef("S0"), ByRef("Wd"), ByRef("Pos")),
        Method<&C::AddSpace>("AddSpace", "Spreads Spac blanks over the gaps between words.", ByRef("S0"),
                             ByRef("Spac")),
        Method<&C::AddStop>("AddStop", "Trims a text and ends it with a point.", ByRef("S0")),
        Method<&C::Giustif>("Giustif", "Justifies a line to Wide0 characters.", ByRef("S0"), ByRef("Wide0"),
                            OptRef("AlsoStop", kFalse)),
        Method<&C::SplitRows>("SplitRows", "Cuts a long text into rows of at most R_Long characters.",
                              ByRef("S_Long"), ByRef("S_Rows"), ByRef("R_Long"), ByRef("N_Rows"),
                              OptRef("ConserveWord", kFalse)),

        // Number formatting
        Method<&C::FmtNum>("FmtNum", "Formats a number right-aligned in Lun characters with Dec decimals.",
                           ByVal("N"), ByVal("Lun"), OptVal("Dec", I(0)), OptRef("Fl_Mig", kFalse),
                           OptRef("Fill_Num", kNoText), OptRef("MaxEndingZeros", I(-1))),
        Method<&C::FmtNumOld>("FmtNumOld", "The previous number formatter, kept for old callers.", ByVal("N"),
                              ByVal("Lun"), OptRef("Dec", I(0)), OptRef("Fl_Mig", kFalse), OptRef("Fill_Num", kNoText)),
        Method<&C::NoVirg>("NoVirg", "An amount in Lun characters without the decimal comma.", ByVal("N"),
                           ByVal("Lun"), ByVal("Dec")),
        Method<&C::FmtTag>("FmtTag", "Formats a numeric text by a format tag such as \"N2\".", ByRef("Txt"),
                           ByRef("Lun"), ByRef("Tag"), OptRef("Trimmed", kFalse)),
        Method<&C::FmtZero>("FmtZero", "The zero of a format tag (\"N2\" gives \"0,00\").", ByRef("T_Tag")),
        Method<&C::Perc2Str>("Perc2Str", "A percentage drawn as a bar of LStr characters.", ByRef("Perc"),
                             OptRef("LStr", I(10)), OptRef("SStr", Variant(u"*."))),

        // Number parsing and small numeric helpers
        Method<&C::Str2Num>("Str2Num", "Text to number; a point makes it the decimal point.", ByRef("S")),
        Method<&C::ToNumber>("ToNumber", "Text to number from its longest numeric prefix; never fails.", ByRef("S")),
        Method<&C::Space2Dbl>("Space2Dbl", "Text to number; the empty text is 0.", ByRef("Txt")),
        Method<&C::Blank20>("Blank20", "Text to number; the empty text is 0.", ByRef("S")),
        Method<&C::InvPunt>("InvPunt", "Swaps decimal and grouping punctuation.", ByRef("N")),
        Method<&C::ToBoolean>("ToBoolean", "A number or a word such as \"SI\" or \"VERO\" as a Boolean.", ByRef("T_Val")),
        Method<&C::Ceil>("Ceil", "The smallest whole number not below N.", ByRef("N")),
        Method<&C::UnCeil>("UnCeil", "One below the floor for a fractional N.", ByRef("N")),
        Method<&C::Min>("Min", "The smaller of two values as a Double.", ByRef("a"), ByRef("B")),
        Method<&C::Minim>("Minim", "The smaller of two values, keeping its type.", ByRef("a"), ByRef("B")),
        Method<&C::Maxim>("Maxim", "The greater of two values, keeping its type.", ByRef("a"), ByRef("B")),
        Method<&C::Incr>("Incr", "Adds QtaIncr to NumVar, in place.", ByRef("NumVar"), OptRef("QtaIncr", D(1.0))),
        Method<&C::Decr>("Decr", "Subtracts QtaDecr from NumVar, in place.", ByRef("NumVar"), OptRef("QtaDecr", D(1.0))),
        Method<&C::Log10>("Log10", "Logarithm to the base 10.", ByRef("X")),

        // Rounding, discounts and VAT
        Method<&C::Arrot>("Arrot", "Rounds to the nearest multiple of Approx; a half goes down.", ByRef("Num"),
                          OptRef("Approx", D(1.0))),
        Method<&C::Arrot_Ecc>("Arrot_Ecc", "Rounds up to a multiple of Approx.", ByRef("Num"), OptRef("Approx", D(1.0))),
        Method<&C::Arrot_Dif>("Arrot_Dif", "Rounds down to a multiple of Approx.", ByRef("Num"), OptRef("Approx", D(1.0))),
        Method<&C::Arrot_Fis>("Arrot_Fis", "Rounds to the nearest multiple of Approx; a half goes up.", ByRef("Num"),
                              OptRef("Approx", D(1.0))),
        Method<&C::PrzScontato>("PrzScontato", "A price after two cascaded discounts in percent.", ByRef("Prz"),
                                OptRef("Sc1", D(0.0)), OptRef("Sc2", D(0.0))),
        Method<&C::ScorpIVA>("ScorpIVA", "The net amount out of a VAT-inclusive amount.", ByRef("Impo"), ByRef("Perc"),
                             OptRef("ArroDec", I(2))),
        Method<&C::EstraiIVA>("EstraiIVA", "The VAT contained in a gross amount.", ByRef("Tot"), ByRef("Perc"),
                              OptRef("ArroDec", I(2))),
        Method<&C::CalcIVA>("CalcIVA", "The VAT on a net amount, halves up.", ByRef("Impo"), ByRef("Perc"),
                            OptRef("ArroDec", I(2))),

        // Amounts in Italian words
        Method<&C::Num2Let>("Num2Let", "An amount in Italian words, cents as a fraction (\"uno/50\").",
                            ByVal("Importo"), OptVal("N_Dec", I(2)), OptVal("Sep", Variant(u"/"))),

        // Date masks and conversions
        Method<&C::FormattaData>("FormattaData", "A compact date yyyymmdd as a masked date dd/mm/yyyy.", ByVal("sData")),
        Method<&C::FmtData>("FmtData", "Day, month and year as a masked date.", ByVal("dd"), ByVal("mm"), ByVal("yy")),
        Method<&C::Cal2Dat>("Cal2Dat", "Day, month and year as a masked date, by slots.", ByVal("d"), ByVal("M"),
                            ByVal("Y")),
        Method<&C::Date2Mask>("Date2Mask", "A Date, compact Long or text as a masked date.", ByRef("Data")),
        Method<&C::Date20>("Date20", "The serial of a masked date; normalises the caller's text.", ByRef("S")),
        Method<&C::Zero2Date>("Zero2Date", "A date from 1900 on as dd/mm/yyyy, else the empty mask.", ByRef("Zz")),
        Method<&C::Zero2DateBl>("Zero2DateBl", "As Zero2Date, but blanks instead of the empty mask.", ByRef("Zz")),
        Method<&C::Msk2Date>("Msk2Date", "A compact date text as a Long.", ByVal("Msk")),
        Method<&C::Msk2Dat>("Msk2Dat", "A masked date as the compact Long yyyymmdd.", ByVal("Msk")),
        Method<&C::Msk2Str>("Msk2Str", "A masked date as the compact text yyyymmdd.", ByVal("Msk")),
        Method<&C::Msk2VarDate>("Msk2VarDate", "A typed date, however incomplete, as a Date.", ByVal("Msk_0")),
        Method<&C::Msk2Day>("Msk2Day", "The day of a masked date.", ByVal("Msk")),
        Method<&C::Msk2Mon>("Msk2Mon", "The month of a masked date.", ByVal("Msk")),
        Method<&C::Msk2Yea>("Msk2Yea", "The year of a masked date.", ByVal("Msk")),
        Method<&C::GbDate>("GbDate", "Swaps day and month of a masked date.", ByVal("sData")),
        Method<&C::Date2Sort>("Date2Sort", "A ten-character date text rearranged as year, month, day.", ByRef("Data"),
                              OptRef("Sep", Variant(u"/"))),
        Method<&C::Dat2Str>("Dat2Str", "A Date as the compact text yyyymmdd.", ByRef("Dat_")),
        Method<&C::Dat2ANSI>("Dat2ANSI", "A Date as \"yyyy-mm-dd 00:00:00\".", ByRef("Dat_")),
        Method<&C::Dat2ANSIFull>("Dat2ANSIFull", "A Date as the timestamp literal {ts '...'}.", ByRef("Dat_")),
        Method<&C::ToDate>("ToDate", "A date text as a Date, or Defau when it is no date.", ByRef("cData"),
                           OptRef("Defau", Variant(Date{0}))),

        // Calendar arithmetic
        Method<&C::IniMese>("IniMese", "The first day of the month.", ByRef("Data")),
        Method<&C::FinMese>("FinMese", "The last day of the month.", ByRef("Data")),
        Method<&C::IniAnno>("IniAnno", "The first day of the year.", ByRef("Data")),
        Method<&C::FinAnno>("FinAnno", "The last day of the year.", ByRef("Data")),
        Method<&C::IsFineMese>("IsFineMese", "Whether a date is the last day of its month.", ByRef("Giorno")),
        Method<&C::Is_FineMese>("Is_FineMese", "Whether a Date is the last day of its month (today when zero).",
                                OptRef("Gior", Variant(Date{0}))),
        Method<&C::Is_IniMese>("Is_IniMese", "Whether a Date is the first day of its month (today when zero).",
                               OptRef("Gior", Variant(Date{0}))),
        Method<&C::GiorniAFineMese>("GiorniAFineMese", "Days left to the end of the month.", ByRef("Oggi")),
        Method<&C::AddMesi>("AddMesi", "Adds whole months, clamping the day to the target month.", ByRef("Data"),
                            ByRef("N_Mesi")),
        Method<&C::ContaMesi>("ContaMesi", "Calendar months touched by a period, both ends included.",
                              ByRef("Dat_Ini"), ByRef("Dat_Fin")),
        Method<&C::Dat_Diff>("Dat_Diff", "Days from one date text to another.", ByRef("Dat_Prima"), ByRef("Dat_Dopo")),
        Method<&C::DOW>("DOW", "Weekday 0 = Sunday to 6 = Saturday, -1 for no date.", ByRef("Data")),
        Method<&C::Date2Lun>("Date2Lun", "The Monday on or before a date.", ByRef("Data")),
        Method<&C::Date2Dom>("Date2Dom", "The Sunday on or after a date.", ByRef("Data")),

        // Times of day
        Method<&C::Min2hh>("Min2hh", "Minutes as a clock text h:mm; tt becomes its magnitude.", ByRef("tt"),
                           OptRef("Lun", I(0))),
        Method<&C::Hh2Min>("Hh2Min", "The minutes of a time of day.", ByRef("Hh"), OptRef("Lun", I(0))),
        Method<&C::Hh2Sec>("Hh2Sec", "The seconds of a clock text.", ByRef("P_Hh")),

        // Seconds and clock differences
        Method<&C::Sec2Hh>("Sec2Hh", "Seconds as a clock text h:mm:ss, hours not limited to a day.", ByVal("Sec"),
                           OptVal("Sep", Variant(u":")), OptVal("ConSec", Variant(true)), OptVal("Lun", I(0))),
        Method<&C::Ora_Diff>("Ora_Diff", "The time from one clock text to another, across midnight.",
                             ByVal("Ora_Ini"), ByVal("Ora_Fin"), OptVal("Sep", Variant(u":"))),

        // Month and weekday names, printed headers
        Method<&C::Num2Mes>("Num2Mes", "The Italian name of a month or payroll period.", ByRef("NuMes")),
        Method<&C::Mese2Num>("Mese2Num", "The number of a month named in Italian or English.", ByRef("p_Mese")),
        Method<&C::Date2WikDay>("Date2WikDay", "The Italian weekday name of a date or weekday number.",
                                ByRef("v_Data")),
        Method<&C::HeadPrtDate>("HeadPrtDate", "Stamps a header line with date, time and page number.", ByVal("Hed"),
                                ByVal("NPage")),

        // Field access
        Method<&C::GetPipeStr>("GetPipeStr", "Field Pos of a delimited string.", ByRef("T_Row"), ByRef("Pos"),
                               OptRef("Sep", kPipe), OptRef("Trimmed", kFalse)),
        Method<&C::GetPipeNumber>("GetPipeNumber", "Field Pos of a delimited string as a number.", ByRef("T_Row"),
                                  ByRef("Pos"), OptRef("Sep", kPipe)),
        Method<&C::PipeBegin>("PipeBegin", "Where field Pos begins.", ByRef("T_Row"), ByRef("Pos"), OptRef("Sep", kPipe)),
        Method<&C::PipeEnd>("PipeEnd", "Where the separator ending field Pos stands.", ByRef("T_Row"), ByRef("Pos"),
                            OptRef("Sep", kPipe)),
        Method<&C::PipeDove>("PipeDove", "Where field N_Pos begins, or 0 when it does not exist.", ByVal("S_Base"),
                             ByRef("N_Pos"), OptRef("Sep", kPipe)),
        Method<&C::PipeCount>("PipeCount", "The number of fields.", ByVal("S_Base"), OptRef("Sep", kPipe)),
        Method<&C::PipeQuale>("PipeQuale", "The number of the first field equal to S_Cerca, or 0.", ByVal("S_Base"),
                              ByRef("S_Cerca"), OptRef("Sep", kPipe), OptRef("B_Trim", kFalse)),
        Method<&C::PipeInStrPos>("PipeInStrPos", "The number of the field containing S_Cerca, or 0.", ByVal("S_Base"),
                                 ByRef("S_Cerca"), OptRef("Sep", kPipe), OptRef("InStart", L(1))),

        // Field editing
        Method<&C::PutPipeStr>("PutPipeStr", "Overwrites field Pos in place, keeping the record's length.",
                               ByRef("Row"), ByRef("Pos"), ByRef("NewStr"), OptRef("Sep", kPipe)),
        Method<&C::SostPipeStr>("SostPipeStr", "Replaces field Pos whole.", ByRef("Row"), ByRef("Pos"),
                                ByRef("NewStr"), OptRef("Sep", kPipe)),
        Method<&C::PipeSost>("PipeSost", "Replaces field Pos, optionally keeping its width and alignment.",
                             ByRef("T_Row"), ByRef("Pos"), ByRef("NewStr"), OptRef("Sep", kPipe),
                             OptRef("NoChangeWidth", kFalse)),

        // Records as rows and columns
        Method<&C::Pipe2Rows>("Pipe2Rows", "The fields of a record, one per row.", ByVal("T_Row"),
                              OptVal("Sep", kPipe), OptVal("Trimmed", kFalse), OptVal("RowSep", kCrLf)),
        Method<&C::Pipe2STRows>("Pipe2STRows", "Records laid out in fixed-width columns for printing.",
                                ByVal("T_Rows"), ByVal("Larghezze"), OptVal("Sep", kPipe), OptVal("Gap", Variant(u" ")),
                                OptVal("RowSep", kCrLf)),

        // Codice fiscale
        Method<&C::Get_CheckCF>("Get_CheckCF", "The check character of a codice fiscale.", ByRef("T_Cf")),
        Method<&C::Is_CFTest>("Is_CFTest", "Classifies a codice fiscale (EnCF_Result).", ByRef("T_Cf")),
        Method<&C::Is_CodFisc>("Is_CodFisc", "Whether a text has the shape of a codice fiscale.", ByRef("S_CF"),
                               OptRef("StrongAlfa", kFalse)),
        Method<&C::Is_CFAlfa>("Is_CFAlfa", "Strict test of a personal codice fiscale.", ByRef("T_Cf")),

        // Partita IVA
        Method<&C::Get_CheckPI>("Get_CheckPI", "The check digit of a partita IVA.", ByRef("T_PI")),
        Method<&C::Is_PITest>("Is_PITest", "Classifies a partita IVA (EnPI_Result).", ByRef("T_PI")),

        // EAN and Code32 check digits
        Method<&C::BCheck_EAN>("BCheck_EAN", "The EAN check digit, or -1 for an unusable code.", ByRef("BCode"),
                               OptRef("BType")),
        Method<&C::BCheck_Code32>("BCheck_Code32", "The Code32 check digit, or -1 for an unusable code.",
                                  ByRef("BCode"), OptRef("BType")),

        // Hexadecimal and binary digits
        Method<&C::Str2Hex>("Str2Hex", "The bytes of a text as hexadecimal digits.", ByVal("S"),
                            OptVal("Sep", kNoText)),
        Method<&C::Hex2Str>("Hex2Str", "Hexadecimal digits as the text of those bytes.", ByVal("T_Hex"),
                            OptVal("Sep", kNoText)),
        Method<&C::Hex2Bin>("Hex2Bin", "Hexadecimal digits as binary digits, four per digit.", ByVal("T_Hex"),
                            OptVal("Sep", kNoText)),
        Method<&C::Bin2Hex>("Bin2Hex", "Binary digits as hexadecimal digits.", ByVal("T_Bin"), OptVal("Sep", kNoText)),

        // Number bases 2 to 36
        Method<&C::Num2Base>("Num2Base", "A whole number in the digits of a base from 2 to 36.", ByVal("N"),
                             ByVal("Base"), OptVal("Lun", I(0))),
        Method<&C::Base2Num>("Base2Num", "The number written in the digits of a base from 2 to 36.", ByVal("T_Num"),
                             ByVal("Base")),

        // RGB colours as hexadecimal texts
        Method<&C::Hex2RGB>("Hex2RGB", "Splits \"#RRGGBB\" into R, G and B; False for no colour text.",
                            ByVal("T_Hex"), ByRef("R"), ByRef("G"), ByRef("B")),
        Method<&C::RGB2Hex>("RGB2Hex", "R, G and B as \"RRGGBB\", each clamped to 0-255.", ByVal("R"), ByVal("G"),
                            ByVal("B"), OptVal("Cancelletto", kFalse)),
        Method<&C::Hex2Color>("Hex2Color", "The colour value of \"#RRGGBB\", or -1.", ByVal("T_Hex")),
        Method<&C::Color2Hex>("Color2Hex", "A colour value as \"RRGGBB\"; \"\" for a system colour.",
                              ByVal("Colore"), OptVal("Cancelletto", kFalse)),
        Method<&C::MescolaColori>("MescolaColori", "Mixes Perc percent of the second colour into the first.",
                                  ByVal("T_Hex1"), ByVal("T_Hex2"), OptVal("Perc", D(50.0))),
        Method<&C::SchiarisciColore>("SchiarisciColore", "Lightens a colour by Perc percent towards white.",
                                     ByVal("T_Hex"), ByVal("Perc")),
        Method<&C::ScurisciColore>("ScurisciColore", "Darkens a colour by Perc percent towards black.", ByVal("T_Hex"),
                                   ByVal("Perc")),

        // BASIC binary number formats
        Method<&C::Cvi2Int>("Cvi2Int", "A 2-byte BASIC integer (CVI) as an Integer.", ByVal("S")),
        Method<&C::Cvs2Dbl>("Cvs2Dbl", "A 4-byte BASIC real (CVS, binary format) as a Double.", ByVal("S")),
        Method<&C::Cvd2Dbl>("Cvd2Dbl", "An 8-byte BASIC real (CVD, binary format) as a Double.", ByVal("S")),
        Method<&C::Int2Mki>("Int2Mki", "An Integer as the 2 bytes of BASIC's MKI$.", ByVal("N")),
        Method<&C::Dbl2Mks>("Dbl2Mks", "A number as the 4 bytes of BASIC's MKS$.", ByVal("N")),
        Method<&C::Dbl2Mkd>("Dbl2Mkd", "A number as the 8 bytes of BASIC's MKD$.", ByVal("N")),

        // Paths and files
        Method<&C::OnlyName>("OnlyName", "The file's name without folder and extension.", ByRef("FilFul")),
        Method<&C::GetExtens>("GetExtens", "The text after the last dot; a final dot is removed from T_Path.",
                              ByRef("T_Path")),
        Method<&C::GetFileName>("GetFileName", "The part after the last backslash less its last four characters.",
                                ByRef("T_Path")),
        Method<&C::GetFullFileName>("GetFullFileName", "GetFileName, a dot and GetExtens.", ByRef("T_Path")),
        Method<&C::GetFileNameOnly>("GetFileNameOnly", "The file's name without its extension.", ByRef("T_Path")),
        Method<&C::GetPathName>("GetPathName", "The folder with its final backslash, or \"\".", ByRef("T_Path")),
        Method<&C::FixBarPth>("FixBarPth", "Adds a final backslash to a path that lacks one.", ByRef("T_Pth")),
        Method<&C::FilExist>("FilExist", "Whether a normal file matches F (an empty one too unless AncheVuoto).",
                             ByVal("F"), OptRef("AncheVuoto", kFalse)),
        Method<&C::GetStrFile>("GetStrFile", "Nc bytes of binary file Nf from St (reversed with Rev); St moves on. On Windows the host's "
                               "file numbers are out of the DLL's reach: a host reads with Get #, any Nf gives 52.",
                               ByRef("Nf"), ByRef("St"), ByRef("Nc"), OptRef("Rev", kFalse)),
        Method<&C::AppeFile>("AppeFile", "Joins F1 and F2 line by line into F_Out; closes every file the component has open "
                             "(on Windows its own, not the host's).",
                             ByRef("F1"), ByRef("F2"), ByRef("F_Out"), OptRef("B_Appe", kFalse)),
        Method<&C::CreateFolder>("CreateFolder", "Makes one folder level; always True.", ByRef("Pth")),
        Method<&C::Is_PathWritable>("Is_PathWritable", "Whether a file can be made in the folder.", ByRef("FullPth")),
        Method<&C::EsploraCartella>("EsploraCartella", "Opens the folder in the system's file browser.", ByRef("Pth"),
                                    OptRef("Radice", kFalse)),

        // Diagnostic log
        Method<&C::Dbg_Log>("Dbg_Log", "Appends a line (a leading § stamps it) to a log file; never fails.",
                            ByRef("Txt_Log"), OptRef("B_First", kFalse), OptRef("T_File", kNoText),
                            OptRef("HasFullPath", kFalse)),

        // INI settings
        Method<&C::WritePrivateProfileInt>("WritePrivateProfileInt", "Writes a number (\"0\" when not numeric).",
                                           ByVal("lpAppName"), ByVal("lpKeyName"), ByVal("lpValore"),
                                           ByVal("lpFileName")),
        Method<&C::SAVEPrivateString>("SAVEPrivateString", "Writes a text to an INI file; 0 when it could not.",
                                      ByVal("lpParagraf"), ByVal("lpKeyName"), ByVal("lpString"), ByVal("lpFileName")),
        Method<&C::LOADPrivateString>("LOADPrivateString", "Reads a text (at most 1023 characters), else lpStd.",
                                      ByVal("lpParagraf"), ByVal("lpKeyName"), ByVal("lpStd"), ByVal("lpFileName")),
        Method<&C::SAVEPrivateInt>("SAVEPrivateInt", "Writes a Long to an INI file.", ByVal("lpParagraf"),
                                   ByVal("lpKeyName"), ByVal("lpNumber"), ByVal("lpFileName")),
        Method<&C::LOADPrivateInt>("LOADPrivateInt", "Reads a Long: lpStdNumber when missing, 0 when not a number.",
                                   ByVal("lpParagraf"), ByVal("lpKeyName"), ByVal("lpStdNumber"), ByVal("lpFileName")),
        Method<&C::SAVEPrivateDbl>("SAVEPrivateDbl", "Writes a Double in the locale's text.", ByVal("lpParagraf"),
                                   ByVal("lpKeyName"), ByVal("lpNumber"), ByVal("lpFileName")),
        Method<&C::LOADPrivateDbl>("LOADPrivateDbl", "Reads a Double: lpStdNumber when missing, 0 when not a number.",
                                   ByVal("lpParagraf"), ByVal("lpKeyName"), ByVal("lpStdNumber"), ByVal("lpFileName")),
        Method<&C::SAVEPrivateDate>("SAVEPrivateDate", "Writes a valid date text; 0 for any other text.",
                                    ByVal("lpParagraf"), ByVal("lpKeyName"), ByVal("lpDate"), ByVal("lpFileName")),
        Method<&C::LOADPrivateDate>("LOADPrivateDate", "Reads a date serial: lpDate when missing, 0 when not a number.",
                                    ByVal("lpParagraf"), ByVal("lpKeyName"), ByVal("lpDate"), ByVal("lpFileName")),
        Method<&C::LOADPrivateChk>("LOADPrivateChk", "Reads a check-box state: 0 when missing (lpStd is ignored).",
                                   ByRef("lpParagraf"), ByRef("lpKeyName"), ByRef("lpStd"), ByRef("lpFileName")),
        Method<&C::SAVEPrivateChk>("SAVEPrivateChk", "Writes a check box's Value; returns 0 always.",
                                   ByRef("lpParagraf"), ByRef("lpKeyName"), ByRef("Chk_"), ByRef("lpFileName")),

        // Registry access
        Method<&C::RegOpenKey>("RegOpenKey", "Opens KeyName under KeyRoot; the handle into phkResult.",
                               ByRef("KeyRoot"), ByRef("KeyName"), ByRef("phkResult")),
        Method<&C::RegCreateKey>("RegCreateKey", "Creates or opens a sub-key made of a permanent and a removable part.",
                                 ByVal("hKey"), ByVal("lpszSubKeyPermanent"), ByVal("lpszSubKeyRemovable"),
                                 ByRef("phkResult")),
        Method<&C::RegCloseKey>("RegCloseKey", "Closes a key handle.", ByRef("hKey")),
        Method<&C::RegDeleteKey>("RegDeleteKey", "Deletes a sub-key that has no sub-keys.", ByRef("hKey"),
                                 ByRef("lpszSubKey")),
        Method<&C::RegDeleteValue>("RegDeleteValue", "Deletes a value of a key.", ByRef("hKey"), ByRef("lpValueName")),
        Method<&C::RegSetNumericValue>("RegSetNumericValue", "Writes the 4 bytes of lData with the type TypeOfData.",
                                       ByVal("hKey"), ByVal("strValueName"), ByVal("TypeOfData"), ByVal("lData")),
        Method<&C::RegSetStringValue>("RegSetStringValue", "Writes a text value (REG_SZ).", ByVal("hKey"),
                                      ByVal("strValueName"), ByVal("strData")),
        Method<&C::RegEnumKey>("RegEnumKey", "The names of a key's sub-keys, or Null.", ByRef("hKey")),
        Method<&C::RegEnumValue>("RegEnumValue", "A key's values (name, data, type) by index, or Null.", ByRef("hKey"),
                                 ByRef("NumValues")),
        Method<&C::GetRegistryValue>("GetRegistryValue", "A value as text, or \"\".", ByRef("KeyRoot"),
                                     ByRef("KeyName"), ByRef("QueryValue")),
        Method<&C::GetZRRegistryValue>("GetZRRegistryValue", "A value as text, or \"ZRERROR\"; traces the read.",
                                       ByRef("KeyRoot"), ByRef("KeyName"), ByRef("QueryValue")),
        Method<&C::RegRead>("RegRead", "A value by its full path such as \"HKLM\\SOFTWARE\\X\\Name\".",
                            ByRef("R_KeyFull"), OptRef("Sep", Variant(u"\\"))),
        Method<&C::GetZRReg>("GetZRReg", "A setting of the settings store, or Std.", ByRef("Appl"), ByRef("Folder"),
                             ByRef("NomeVar"), ByRef("Std")),
        Method<&C::SetZRReg>("SetZRReg", "Writes a setting of the settings store.", ByRef("Appl"), ByRef("Folder"),
                             ByRef("NomeVar"), ByRef("val"), ByRef("TipoVar")),
        Method<&C::SAVERegString>("SAVERegString", "Saves a text setting; always 0.", ByRef("lpParagraf"),
                                  ByRef("lpKeyName"), ByRef("lpString"), ByRef("lpRegINI")),
        Method<&C::LOADRegString>("LOADRegString", "Loads a text setting, or lpStd.", ByRef("lpParagraf"),
                                  ByRef("lpKeyName"), ByRef("lpStd"), ByRef("lpRegINI")),
        Method<&C::SAVERegInt>("SAVERegInt", "Saves a whole-number setting; always 0.", ByRef("lpParagraf"),
                               ByRef("lpKeyName"), ByRef("lpLong"), ByRef("lpRegINI")),
        Method<&C::LOADRegInt>("LOADRegInt", "Loads a whole-number setting, or lpStd.", ByRef("lpParagraf"),
                               ByRef("lpKeyName"), ByRef("lpStd"), ByRef("lpRegINI")),
        Method<&C::SAVERegNumber>("SAVERegNumber", "Saves a number setting; always 0.", ByRef("lpParagraf"),
                                  ByRef("lpKeyName"), ByRef("lpLong"), ByRef("lpRegINI")),
        Method<&C::LOADRegNumber>("LOADRegNumber", "Loads a number setting, or lpStd.", ByRef("lpParagraf"),
                                  ByRef("lpKeyName"), ByRef("lpStd"), ByRef("lpRegINI")),
        Method<&C::SAVERegDate>("SAVERegDate", "Saves a date setting as text; always 0.", ByRef("lpParagraf"),
                                ByRef("lpKeyName"), ByRef("lpDate"), ByRef("lpRegINI")),
        Method<&C::LOADRegDate>("LOADRegDate", "Loads a date setting, or lpStd.", ByRef("lpParagraf"),
                                ByRef("lpKeyName"), ByRef("lpStd"), ByRef("lpRegINI")),
        Method<&C::GetWindowsVer>("GetWindowsVer", "The name and version of the operating system."),
        Method<&C::GetWindowsBit>("GetWindowsBit", "64 on a 64-bit system, else 32."),

        // Form and window helpers
        Method<&C::FormPrimoPiano>("FormPrimoPiano", "Keeps a form above all other windows, or releases it.",
                                   ByRef("Myfrm"), ByRef("SetOnTop")),
        Method<&C::TimerProc>("TimerProc", "Timer callback: stops the timer; timer &H5000 confirms the pending dialog box.",
                              ByVal("hWnd"), ByVal("uMsg"), ByVal("idEvent"), ByVal("dwTime")),
        Method<&C::ejec>("ejec", "Ejects the page: a form feed printed to the open file number Nf. On Windows "
                         "a host prints Chr(12) itself: its file numbers are out of the DLL's reach (52).", ByRef("Nf")),
    };
}

}  // namespace

const ClassInfo& ClKivClass() {
    static const ClassInfo info("Cl_KIV", "DLLKiv.Cl_KIV", [] { return Object(std::make_shared<Cl_KIV>()); },
                                BuildTable());
    return info;
}

const ClassInfo* Cl_KIV::description() const { return &ClKivClass(); }

// ---- enumerations, the record and the registry constants ----

#define KIV_CONSTANT(name, value) Constant{#name, name},
#define KIV_FIELD_INFO(type, field) FieldInfo{#field, dispatch_detail::TypeOf<type>::name},

const std::vector<EnumInfo>& Enumerations() {
    static const std::vector<EnumInfo> all = {
        {"En_SysDir", {KIV_EN_SYSDIR(KIV_CONSTANT)}},
        {"EnCF_Result", {KIV_ENCF_RESULT(KIV_CONSTANT)}},
        {"EnPI_Result", {KIV_ENPI_RESULT(KIV_CONSTANT)}},
        {"En_EANType", {KIV_EN_EANTYPE(KIV_CONSTANT)}},
        {"ZRReg_Enum", {KIV_ZRREG_ENUM(KIV_CONSTANT)}},
    };
    return all;
}

const std::vector<RecordInfo>& Records() {
    static const std::vector<RecordInfo> all = {{"PrtStru", {KIV_PRTSTRU(KIV_FIELD_INFO)}}};
    return all;
}

const std::vector<Constant>& RegistryConstants() {
    static const std::vector<Constant> all = {
        {"HKEY_CURRENT_USER", static_cast<Long>(0x80000001u)},
        {"HKEY_LOCAL_MACHINE", static_cast<Long>(0x80000002u)},
        {"REG_NONE", 0},
        {"REG_SZ", 1},
        {"REG_BINARY", 3},
        {"REG_DWORD", 4},
    };
    return all;
}

}  // namespace kiv
