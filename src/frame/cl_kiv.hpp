// Cl_KIV: the component's one creatable class. This declaration is the
// interface; each member is defined in the folder of its subject, and the
// dispatch table (interface_table.cpp) publishes it to late-bound callers.
//
// Passing: a by-value parameter is a plain C++ parameter; a by-reference
// parameter the operation changes is a Ref<T>; a by-reference parameter it
// only reads is a plain or const-reference parameter here and is marked by
// reference in the dispatch table.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "frame/dispatchable.hpp"
#include "frame/ref.hpp"
#include "frame/value.hpp"

namespace kiv {

// The enumerations and the record of the interface. Each is one list, from
// which both the C++ declaration here and its published description
// (interface_table.cpp) are made.
#define KIV_EN_SYSDIR(X)                                                                                    \
    X(SD_Windows, 0) X(SD_Prog, 1) X(SD_Temp, 2) X(SD_Sys32, 3) X(SD_Doc, 4) X(SD_Desk, 5) X(SD_Fonts, 6) \
    X(SD_CommFiles, 7) X(SD_CommStartup, 8) X(SD_UserStartup, 9)
#define KIV_ENCF_RESULT(X) X(CF_IsOK, 0) X(CF_Num, 1) X(CF_Short, 2) X(CF_Long, 3) X(CF_Bad, 90) X(CF_Null, 99)
#define KIV_ENPI_RESULT(X)                                                                                  \
    X(PI_IsOK, 0) X(PI_Alfa, 1) X(PI_Short, 2) X(PI_Long, 3) X(PI_IsCF, 4) X(PI_Estera, 5) X(PI_Bad, 90)   \
    X(PI_Null, 99)
#define KIV_EN_EANTYPE(X) X(EanT_Ean8, 0) X(EanT_Ean13, 1)
#define KIV_ZRREG_ENUM(X) X(ZRReg_Numeric, 0) X(ZRReg_String, 1)
#define KIV_ENUMERATOR(name, value) name = value,

enum En_SysDir : Long { KIV_EN_SYSDIR(KIV_ENUMERATOR) };
enum EnCF_Result : Long { KIV_ENCF_RESULT(KIV_ENUMERATOR) };
enum EnPI_Result : Long { KIV_ENPI_RESULT(KIV_ENUMERATOR) };
enum En_EANType : Long { KIV_EN_EANTYPE(KIV_ENUMERATOR) };
enum ZRReg_Enum : Long { KIV_ZRREG_ENUM(KIV_ENUMERATOR) };

// A printer description, declared for hosts; no operation takes or returns it.
#define KIV_PRTSTRU(X)                                                                                     \
    X(String, Nom) X(String, Drv) X(String, Dev) X(Integer, Len) X(Integer, Lar) X(Integer, Land)          \
    X(Integer, Top) X(Integer, Bot) X(String, Cha) X(String, Act) X(String, Por) X(String, CNo)            \
    X(Single, DNo) X(Integer, PNo) X(String, CCp) X(Single, DCp) X(Integer, PCp) X(String, CSCp)           \
    X(Single, DSCp) X(Integer, PSCp) X(Integer, Color) X(String, Filler)
#define KIV_FIELD(type, name) type name{};
struct PrtStru {
    KIV_PRTSTRU(KIV_FIELD)
};

class Cl_KIV : public Dispatchable {
public:
    Cl_KIV();

    // Its members as published (interface_table.cpp); calls by name go through them.
    const ClassInfo* description() const override;

    // Object slots for the host's mask controls; no operation reads them.
    Object DlK_TimMask;
    Object DlK_DatMask;

    // Entry k of the nibble table used by the hex-to-binary conversions.
    const String& Nibble(int index) const;

    // --- Padding and alignment (text/padding.cpp)
    void AllineaDxSpazi(Ref<String> Record, const String& fill);
    String AllineaDxZeri(Integer LenCod, const String& fill);
    void AllineaSinZeri(Ref<String> stringa, Integer Pos);
    String PoniADes(const String& S, Integer N);
    String PoniASin(const String& S, Integer N);
    String Allunga(const String& S, Integer B, const String& C = u" ");
    String MettiADes(Ref<Variant> S, Integer N, const String& Filler = u"");
    String MettiASin(Ref<Variant> S, Integer N, const String& Filler = u"");
    String MettiInCentro(Ref<Variant> S, Integer N, const String& Filler = u"", Boolean NoTrim = false);
    String Cntr(const String& S, Integer N);
    String Repl(Integer Volte, const String& Frase);
    String StrInsert(const String& S_Long, const String& S_Short, Integer C_Pos, Boolean B_Trim = false);
    String STR_Trunc(const String& S, Integer NCharToCut);

    // --- Character substitution and cleaning (text/substitution.cpp)
    String SostChar(const String& S, const String& C1, const String& C2);
    Variant SostWord(const Variant& Str_0, const String& Str_Find, const String& Str_Repl, Integer StartOccur = 1,
                     Integer MaxOccur = 0);
    String SostLoChar(const String& S, const String& Nuovo = u".");
    String SostHiChar(const String& S, const String& Nuovo = u".");
    String Apo_No(const String& S);
    String Apo_Yes(const Variant& S);
    String Apo_Fix(const Variant& S);
    String Apo_Dup(const Variant& S);
    String NoChar(const String& S, const String& Caz);
    String NoPunt(const String& S);
    String NoTrail(Ref<String> a);
    String CompSpac(const Variant& a);
    String FixAmper(const String& Si);
    String Capital(const String& S, Boolean SingleWords = false);
    Integer UpAscii(Integer a);
    Integer LoAscii(Integer a);
    String SoloCifre(const String& T_Str);
    String Lettere(const String& S_0);
    String Numeri(const String& S_0);
    String LastWord(const String& Lin);
    String InvStr(const Variant& S);

    // --- Words, justification and row splitting (text/words.cpp)
    Long ParseWord(const Variant& S0, Ref<VariantArray> Wd, Ref<VariantArray> Pos);
    String AddSpace(const Variant& S0, const Variant& Spac);
    String AddStop(const Variant& S0);
    String Giustif(const Variant& S0, const Variant& Wide0, Boolean AlsoStop = false);
    void SplitRows(const String& S_Long, Ref<StringArray> S_Rows, Integer R_Long, Integer N_Rows,
                   Boolean ConserveWord = false);

    // --- Number formatting (numbers/formatting.cpp)
    String FmtNum(const Variant& N, Integer Lun, Integer Dec = 0, Ref<Boolean> Fl_Mig = false,
                  const String& Fill_Num = u"", Integer MaxEndingZeros = -1);
    String FmtNumOld(const Variant& N, Integer Lun, Integer Dec = 0, Ref<Boolean> Fl_Mig = false,
                     const String& Fill_Num = u"");
    String NoVirg(const Variant& N, Integer Lun, Integer Dec);
    String FmtTag(const String& Txt, Ref<Variant> Lun, const String& Tag, Boolean Trimmed = false);
    String FmtZero(const Variant& T_Tag);
    String Perc2Str(Ref<Variant> Perc, Ref<Integer> LStr = Integer{10}, Ref<String> SStr = u"*.");

    // --- Number parsing and small numeric helpers (numbers/parsing.cpp)
    Double Str2Num(const Variant& S);
    Double ToNumber(const Variant& S);
    Double Space2Dbl(const Variant& Txt);
    Double Blank20(const String& S);
    String InvPunt(const String& N);
    Boolean ToBoolean(const Variant& T_Val);
    Long Ceil(const Variant& N);
    Long UnCeil(const Variant& N);
    Double Min(const Variant& a, const Variant& B);
    Variant Minim(const Variant& a, const Variant& B);
    Variant Maxim(const Variant& a, const Variant& B);
    void Incr(Ref<Variant> NumVar, Double QtaIncr = 1.0);
    void Decr(Ref<Variant> NumVar, Double QtaDecr = 1.0);
    Double Log10(const Variant& X);

    // --- Rounding, discounts and VAT (numbers/rounding.cpp)
    Double Arrot(Double Num, Double Approx = 1.0);
    Double Arrot_Ecc(Double Num, Double Approx = 1.0);
    Double Arrot_Dif(Double Num, Double Approx = 1.0);
    Double Arrot_Fis(Double Num, Double Approx = 1.0);
    Double PrzScontato(Double Prz, Double Sc1 = 0.0, Double Sc2 = 0.0);
    Double ScorpIVA(Double Impo, Double Perc, Integer ArroDec = 2);
    Double EstraiIVA(Double Tot, Double Perc, Ref<Integer> ArroDec = Integer{2});
    Double CalcIVA(Double Impo, Single Perc, Integer ArroDec = 2);

    // --- Amounts in Italian words (numbers/words.cpp)
    String Num2Let(const Variant& Importo, Integer N_Dec = 2, const String& Sep = u"/");

    // --- Date masks and conversions (dates/masks.cpp)
    String FormattaData(const Variant& sData);
    String FmtData(Integer dd, Integer mm, Integer yy);
    String Cal2Dat(Integer d, Integer M, Integer Y);
    String Date2Mask(const Variant& Data);
    Double Date20(Ref<Variant> S);
    String Zero2Date(const Variant& Zz);
    String Zero2DateBl(const Variant& Zz);
    Long Msk2Date(const String& Msk);
    Long Msk2Dat(const String& Msk);
    String Msk2Str(const String& Msk);
    Date Msk2VarDate(const String& Msk_0);
    Integer Msk2Day(const String& Msk);
    Integer Msk2Mon(const String& Msk);
    Integer Msk2Yea(const String& Msk);
    String GbDate(const String& sData);
    String Date2Sort(const Variant& Data, const String& Sep = u"/");
    String Dat2Str(Date Dat_);
    String Dat2ANSI(Date Dat_);
    String Dat2ANSIFull(Date Dat_);
    Date ToDate(const String& cData, Date Defau = Date{0});

    // --- Calendar arithmetic (dates/calendar.cpp)
    String IniMese(const Variant& Data);
    String FinMese(const Variant& Data);
    String IniAnno(const Variant& Data);
    String FinAnno(const Variant& Data);
    Boolean IsFineMese(const Variant& Giorno);
    Boolean Is_FineMese(Ref<Date> Gior = Date{0});
    Boolean Is_IniMese(Ref<Date> Gior = Date{0});
    Integer GiorniAFineMese(Date Oggi);
    String AddMesi(const Variant& Data, Integer N_Mesi);
    Long ContaMesi(Date Dat_Ini, Date Dat_Fin);
    Long Dat_Diff(const String& Dat_Prima, const String& Dat_Dopo);
    Integer DOW(const Variant& Data);
    String Date2Lun(const Variant& Data);
    String Date2Dom(const Variant& Data);

    // --- Times of day (dates/times.cpp)
    String Min2hh(Ref<Long> tt, Integer Lun = 0);
    Long Hh2Min(Date Hh, Integer Lun = 0);
    Long Hh2Sec(const String& P_Hh);

    // --- Seconds and clock differences (dates/clock_texts.cpp)
    String Sec2Hh(Long Sec, const String& Sep = u":", Boolean ConSec = true, Integer Lun = 0);
    String Ora_Diff(const String& Ora_Ini, const String& Ora_Fin, const String& Sep = u":");

    // --- Month and weekday names, printed headers (dates/names.cpp)
    String Num2Mes(Integer NuMes);
    Integer Mese2Num(const String& p_Mese);
    String Date2WikDay(const Variant& v_Data);
    String HeadPrtDate(const String& Hed, Long NPage);

    // --- Field access (delimited/fields.cpp)
    String GetPipeStr(const String& T_Row, Integer Pos, const String& Sep = u"|", Boolean Trimmed = false);
    Double GetPipeNumber(const String& T_Row, Integer Pos, const String& Sep = u"|");
    Long PipeBegin(const String& T_Row, Integer Pos, const String& Sep = u"|");
    Long PipeEnd(const String& T_Row, Integer Pos, const String& Sep = u"|");
    Variant PipeDove(const String& S_Base, Integer N_Pos, const String& Sep = u"|");
    Long PipeCount(const String& S_Base, const String& Sep = u"|");
    Long PipeQuale(const String& S_Base, const String& S_Cerca, const String& Sep = u"|", Boolean B_Trim = false);
    Long PipeInStrPos(const String& S_Base, const String& S_Cerca, const String& Sep = u"|", Long InStart = 1);

    // --- Field editing (delimited/editing.cpp)
    String PutPipeStr(const String& Row, Integer Pos, const String& NewStr, const String& Sep = u"|");
    String SostPipeStr(const String& Row, Ref<Integer> Pos, const String& NewStr, const String& Sep = u"|");
    String PipeSost(const String& T_Row, Integer Pos, const String& NewStr, const String& Sep = u"|",
                    Boolean NoChangeWidth = false);

    // --- Records as rows and columns (delimited/rows.cpp)
    String Pipe2Rows(const String& T_Row, const String& Sep = u"|", Boolean Trimmed = false,
                     const String& RowSep = u"\r\n");
    String Pipe2STRows(const String& T_Rows, const String& Larghezze, const String& Sep = u"|",
                       const String& Gap = u" ", const String& RowSep = u"\r\n");

    // --- Codice fiscale (codes/codice_fiscale.cpp)
    String Get_CheckCF(const String& T_Cf);
    EnCF_Result Is_CFTest(const String& T_Cf);
    Boolean Is_CodFisc(const String& S_CF, Boolean StrongAlfa = false);
    Boolean Is_CFAlfa(const String& T_Cf);

    // --- Partita IVA (codes/partita_iva.cpp)
    String Get_CheckPI(const String& T_PI);
    EnPI_Result Is_PITest(const String& T_PI);

    // --- EAN and Code32 check digits (codes/barcodes.cpp)
    Integer BCheck_EAN(const String& BCode, En_EANType BType = EanT_Ean8);
    Integer BCheck_Code32(const String& BCode, En_EANType BType = EanT_Ean8);

    // --- Hexadecimal and binary digits (conversions/hexadecimal.cpp)
    String Str2Hex(const String& S, const String& Sep = u"");
    String Hex2Str(const String& T_Hex, const String& Sep = u"");
    String Hex2Bin(const String& T_Hex, const String& Sep = u"");
    String Bin2Hex(const String& T_Bin, const String& Sep = u"");

    // --- Number bases 2 to 36 (conversions/bases.cpp)
    String Num2Base(const Variant& N, Integer Base, Integer Lun = 0);
    Double Base2Num(const String& T_Num, Integer Base);

    // --- RGB colours as hexadecimal texts (conversions/colours.cpp)
    Boolean Hex2RGB(const String& T_Hex, Ref<Integer> R, Ref<Integer> G, Ref<Integer> B);
    String RGB2Hex(Integer R, Integer G, Integer B, Boolean Cancelletto = false);
    Long Hex2Color(const String& T_Hex);
    String Color2Hex(Long Colore, Boolean Cancelletto = false);
    String MescolaColori(const String& T_Hex1, const String& T_Hex2, Double Perc = 50.0);
    String SchiarisciColore(const String& T_Hex, Double Perc);
    String ScurisciColore(const String& T_Hex, Double Perc);

    // --- BASIC binary number formats (conversions/basic_numbers.cpp)
    Integer Cvi2Int(const String& S);
    Double Cvs2Dbl(const String& S);
    Double Cvd2Dbl(const String& S);
    String Int2Mki(Integer N);
    String Dbl2Mks(Double N);
    String Dbl2Mkd(Double N);

    // --- Paths and files (system/paths.cpp, system/files.cpp)
    String OnlyName(const String& FilFul);
    String GetExtens(Ref<String> T_Path);
    String GetFileName(const String& T_Path);
    String GetFullFileName(Ref<String> T_Path);
    String GetFileNameOnly(Ref<String> T_Path);
    String GetPathName(const String& T_Path);
    String FixBarPth(const String& T_Pth);
    Boolean FilExist(const String& F, Boolean AncheVuoto = false);
    String GetStrFile(const Variant& Nf, Ref<Variant> St, const Variant& Nc, Boolean Rev = false);
    void AppeFile(const String& F1, const String& F2, const String& F_Out, Boolean B_Appe = false);
    Boolean CreateFolder(const String& Pth);
    Boolean Is_PathWritable(const String& FullPth);
    void EsploraCartella(const String& Pth, Boolean Radice = false);

    // --- Diagnostic log (system/log.cpp)
    void Dbg_Log(const Variant& Txt_Log, Boolean B_First = false, const String& T_File = u"",
                 Boolean HasFullPath = false);

    // --- INI settings (system/ini.cpp)
    Long WritePrivateProfileInt(const String& lpAppName, const String& lpKeyName, const Variant& lpValore,
                                const String& lpFileName);
    Long SAVEPrivateString(const String& lpParagraf, const String& lpKeyName, const String& lpString,
                           const String& lpFileName);
    String LOADPrivateString(const String& lpParagraf, const String& lpKeyName, const String& lpStd,
                             const String& lpFileName);
    Long SAVEPrivateInt(const String& lpParagraf, const String& lpKeyName, Long lpNumber, const String& lpFileName);
    Long LOADPrivateInt(const String& lpParagraf, const String& lpKeyName, Long lpStdNumber,
                        const String& lpFileName);
    Long SAVEPrivateDbl(const String& lpParagraf, const String& lpKeyName, Double lpNumber, const String& lpFileName);
    Double LOADPrivateDbl(const String& lpParagraf, const String& lpKeyName, Double lpStdNumber,
                          const String& lpFileName);
    Long SAVEPrivateDate(const String& lpParagraf, const String& lpKeyName, const String& lpDate,
                         const String& lpFileName);
    Double LOADPrivateDate(const String& lpParagraf, const String& lpKeyName, Double lpDate,
                           const String& lpFileName);
    Long LOADPrivateChk(const String& lpParagraf, const String& lpKeyName, Long lpStd, const String& lpFileName);
    Long SAVEPrivateChk(const String& lpParagraf, const String& lpKeyName, const Object& Chk_,
                        const String& lpFileName);

    // --- Registry access (system/registry.cpp)
    Boolean RegOpenKey(Long KeyRoot, const String& KeyName, Ref<Long> phkResult);
    Boolean RegCreateKey(Long hKey, const String& lpszSubKeyPermanent, const String& lpszSubKeyRemovable,
                         Ref<Long> phkResult);
    Boolean RegCloseKey(Long hKey);
    Boolean RegDeleteKey(Long hKey, const String& lpszSubKey);
    Boolean RegDeleteValue(Long hKey, const String& lpValueName);
    Boolean RegSetNumericValue(Long hKey, const String& strValueName, Long TypeOfData, Long lData);
    Boolean RegSetStringValue(Long hKey, const String& strValueName, const String& strData);
    Variant RegEnumKey(Long hKey);
    Variant RegEnumValue(Long hKey, Ref<Long> NumValues);
    Variant GetRegistryValue(Long KeyRoot, const String& KeyName, const String& QueryValue);
    Variant GetZRRegistryValue(Long KeyRoot, const String& KeyName, const String& QueryValue);
    String RegRead(const String& R_KeyFull, const String& Sep = u"\\");
    Variant GetZRReg(const Variant& Appl, const Variant& Folder, const String& NomeVar, const Variant& Std);
    Boolean SetZRReg(const Variant& Appl, const Variant& Folder, const String& NomeVar, const Variant& val,
                     ZRReg_Enum TipoVar);
    Long SAVERegString(const String& lpParagraf, const String& lpKeyName, const String& lpString,
                       const String& lpRegINI);
    String LOADRegString(const String& lpParagraf, const String& lpKeyName, const String& lpStd,
                         const String& lpRegINI);
    Long SAVERegInt(const String& lpParagraf, const String& lpKeyName, Long lpLong, const String& lpRegINI);
    Long LOADRegInt(const String& lpParagraf, const String& lpKeyName, Long lpStd, const String& lpRegINI);
    Long SAVERegNumber(const String& lpParagraf, const String& lpKeyName, Long lpLong, const String& lpRegINI);
    Double LOADRegNumber(const String& lpParagraf, const String& lpKeyName, Long lpStd, const String& lpRegINI);
    Long SAVERegDate(const String& lpParagraf, const String& lpKeyName, const Variant& lpDate,
                     const String& lpRegINI);
    Date LOADRegDate(const String& lpParagraf, const String& lpKeyName, const Variant& lpStd,
                     const String& lpRegINI);

    // --- System information and the shell (system/system_info.cpp)
    String GetSysDir(En_SysDir Quale);
    String GetWindowsVer();
    Integer GetWindowsBit();
    String GetPCName();
    String GetWinUserName();
    Boolean Is_ThemeActive();
    String GetProviderType();
    String Ext2Pgm(const String& Estensione);
    Boolean ApriSito(const String& Url);
    String GetIP();
    Boolean SaveIP(const String& T_File, Boolean B_Appe = false);
    String SaveIP2Str();

    // --- Password scrambling and the master user (security/passwords.cpp)
    // Obfuscation with a fixed key, not encryption.
    String PwdCrypt(const String& T_Pwd);
    String PwdDeCrypt(const String& T_Crypt);
    Boolean UserInit(const String& Appl);
    // Filled by UserInit, or set by the host; DlK_MasterPwd holds the scrambled form.
    String DlK_WinUser;
    String DlK_PCName;
    String DlK_MasterUser;
    String DlK_MasterPwd;

    // --- Form and window helpers (forms/window_helpers.cpp)
    void FormPrimoPiano(const Object& Myfrm, Boolean SetOnTop);
    void TimerProc(Long hWnd, Long uMsg, Long idEvent, Long dwTime);
    void ejec(const Variant& Nf);
    // Form geometry kept in an INI file (forms/form_geometry.cpp)
    Boolean FormSizeSAVE(const Object& Frm, const String& lpFileName = u"");
    Boolean FormSizeLOAD(const Object& Frm, const String& lpFileName = u"", Boolean SoloPosizione = false);
    // The key filter of amount boxes (forms/amount_keys.cpp)
    Integer TestDec(Ref<Integer> KeyAscii, const Object& Txt = nullptr, Integer N_Dec = 2, Boolean Negativo = false);
    // Dates and times checked on leaving a box (forms/focus_validators.cpp)
    Boolean LostFocusDate(const Object& Txt, Boolean Vuota = true, Boolean Avvisa = false);
    Boolean LostFocusTime(const Object& Txt, Boolean Vuota = true, Boolean ConSec = false, Boolean Avvisa = false,
                          const String& Sep = u":");
    // List and combo boxes (forms/lists.cpp)
    Long Pipe2List(const String& T_Row, const Object& Lst, const String& Sep = u"|", Boolean Pulisci = true,
                   Boolean Trimmed = false, const String& DataSep = u"");
    Long GetListWdt(const Object& Lst);
    Long AllargaList(const Object& Lst, Long Extra = 0);
    Long CercaList(const Object& Lst, const String& T_Cerca, Boolean Esatto = true, Boolean Seleziona = false);
    Long SelItemData(const Object& Lst, Long N_Data);
    Long GetItemData(const Object& Lst, Long Std = 0);
    String List2Pipe(const Object& Lst, const String& Sep = u"|");
    // A list written to a text file (forms/list_export.cpp)
    String List2Txt(const Object& Lst, const String& T_File = u"", const String& Titolo = u"", Boolean Apri = true);
    void Lst2Txt(const Object& Lst, const String& Titolo = u"");
    // A gradient painted on a form (forms/gradient.cpp)
    void FadeForm2(const Object& Frm, Long Colore1 = 16711680, Long Colore2 = 0, Boolean Verticale = true,
                   Integer N_Bande = 64);

private:
    friend struct ClKivPrivate;  // lets the unit tests reach the private operations

    // Drops every NUL and the character after it (used by GetWindowsVer).
    String StripNuls(const Variant& Text);
    // Completes and normalises a typed date, rewriting X (used by Date20).
    String NormalizeDateText(Ref<Variant> X);
    // The one reader of a registry value behind GetRegistryValue,
    // GetZRRegistryValue and RegRead.
    void ReadRegistryValue(Long KeyRoot, const String& KeyName, const String& QueryValue, String& Value,
                           Boolean& Ok);

    std::array<String, 17> nibbles_;
    // The platform's result code of the last registry handle call (0 = success).
    Long lastRegResult_ = 0;
};

}  // namespace kiv
