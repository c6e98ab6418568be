' The Windows seams through the DLL: INI files through kernel32's private
' profiles, the settings store in the prefix's own registry, the Win32 file
' system and the machine's facts. Each check prints "FAIL ..." when it does
' not hold; the last line is the sentinel the harness requires.
Option Explicit
Dim fails : fails = 0
Sub Check(name, got, want)
    If got <> want Then
        WScript.Echo "FAIL " & name & ": got [" & got & "] want [" & want & "]"
        fails = fails + 1
    End If
End Sub

Dim k : Set k = CreateObject("DLLKiv.Cl_KIV")
Dim fso : Set fso = CreateObject("Scripting.FileSystemObject")
Dim sh : Set sh = CreateObject("WScript.Shell")
Dim dir : dir = "C:\kiv_seams"
If fso.FolderExists(dir) Then fso.DeleteFolder dir, True

' ---- INI settings: the platform's own calls, checked in the file's bytes
Dim ini : ini = dir & "\prova.ini"
Check "ini write, folder missing", k.SAVEPrivateString("Sez", "Chiave", "uno", ini), 0
Check "ini folder made", k.CreateFolder(dir), True
Check "ini write", k.SAVEPrivateString("Sez", "Chiave", "uno", ini), 1
Check "ini write 1252", k.SAVEPrivateString("Sez", "Citta", "citt" & Chr(224), ini), 1
Check "ini write number", k.SAVEPrivateInt("Altra", "N", -42, ini), 1
Check "ini read", k.LOADPrivateString("sez", "CHIAVE", "std", ini), "uno"
Check "ini read 1252", k.LOADPrivateString("Sez", "Citta", "", ini), "citt" & Chr(224)
Check "ini read number", k.LOADPrivateInt("Altra", "N", 7, ini), -42
Check "ini missing key", k.LOADPrivateString("Sez", "Manca", "std", ini), "std"
Check "ini fallback trailing blanks", k.LOADPrivateString("Sez", "Manca", "std  ", ini), "std"
Check "ini missing file", k.LOADPrivateInt("Sez", "N", 7, dir & "\nessuno.ini"), 7
Check "ini rewrite", k.SAVEPrivateString("Sez", "Chiave", "due", ini), 1
Dim text : text = fso.OpenTextFile(ini).ReadAll()
Check "ini file section", InStr(text, "[Sez]" & vbCrLf & "Chiave=due" & vbCrLf & "Citta=citt" & Chr(224) & vbCrLf) = 1, True
Check "ini file second section", InStr(text, "[Altra]" & vbCrLf & "N=-42" & vbCrLf) > 0, True
' A name without a folder is a file of the Windows folder.
Dim bare : bare = fso.GetSpecialFolder(0) & "\kiv_seams.ini"
If fso.FileExists(bare) Then fso.DeleteFile bare
Check "ini bare name write", k.SAVEPrivateString("S", "K", "v", "kiv_seams.ini"), 1
Check "ini bare name in the Windows folder", fso.FileExists(bare), True
Check "ini bare name read", k.LOADPrivateString("S", "K", "", "kiv_seams.ini"), "v"
fso.DeleteFile bare

' ---- the settings store in the registry of the prefix
Const HKLM = &H80000002
Dim store : store = "HKLM\SOFTWARE\KORVANE_Lidmar\KivSeams\"
Dim h : h = 0
Sub DropStore()
    Dim hs
    If k.RegOpenKey(HKLM, "SOFTWARE\KORVANE_Lidmar\KivSeams", hs) Then
        k.RegDeleteKey hs, "Prove"
        k.RegCloseKey hs
    End If
    If k.RegOpenKey(HKLM, "SOFTWARE\KORVANE_Lidmar", hs) Then
        k.RegDeleteKey hs, "KivSeams"
        k.RegCloseKey hs
    End If
End Sub
DropStore
Check "reg missing", k.GetZRReg("KivSeams", "Prove", "Testo", "std"), "std"
Check "reg set text", k.SetZRReg("KivSeams", "Prove", "Testo", "ciao " & Chr(232), 1), True
Check "reg set number", k.SetZRReg("KivSeams", "Prove", "Numero", 42, 0), True
Check "reg set negative", k.SetZRReg("KivSeams", "Prove", "Meno", -1, 0), True
Check "reg get text", k.GetZRReg("KivSeams", "Prove", "Testo", "std"), "ciao " & Chr(232)
Check "reg get number", k.GetZRReg("KivSeams", "Prove", "Numero", "std"), "42"
Check "reg get negative", k.GetZRReg("KivSeams", "Prove", "Meno", "std"), "-1"
' The system's registry holds them with their types.
Check "reg text in the registry", sh.RegRead(store & "Prove\Testo"), "ciao " & Chr(232)
Check "reg dword in the registry", sh.RegRead(store & "Prove\Numero"), 42
sh.RegWrite store & "Prove\Scritto", "da fuori", "REG_SZ"
Check "reg written by another", k.GetRegistryValue(HKLM, "SOFTWARE\KORVANE_Lidmar\KivSeams\Prove", "Scritto"), "da fuori"
' Handles travel as Longs.
Check "reg open", k.RegOpenKey(HKLM, "SOFTWARE\KORVANE_Lidmar\KivSeams", h), True
Check "reg handle", h <> 0, True
Dim names : names = k.RegEnumKey(h)
' (Wine's VBScript cannot index an array of texts: only its presence is checked.)
Check "reg sub-keys", IsArray(names), True
Check "reg close", k.RegCloseKey(h), True
Dim count : count = 0
Check "reg open values", k.RegOpenKey(HKLM, "SOFTWARE\KORVANE_Lidmar\KivSeams\Prove", h), True
names = k.RegEnumValue(h, count)
Check "reg values", count, 4
Check "reg delete value", k.RegDeleteValue(h, "Scritto"), True
Check "reg deleted value", k.GetZRReg("KivSeams", "Prove", "Scritto", "std"), "std"
Check "reg close", k.RegCloseKey(h), True
Check "reg open missing", k.RegOpenKey(HKLM, "SOFTWARE\KORVANE_Lidmar\Nessuna", h), False
Check "reg missing handle", h, 0
DropStore
Check "reg store dropped", k.RegOpenKey(HKLM, "SOFTWARE\KORVANE_Lidmar\KivSeams", h), False

' ---- files by Win32 paths; the host's file numbers are out of reach
Dim f
Set f = fso.CreateTextFile(dir & "\a.txt") : f.Write "riga a" & vbCrLf : f.Close
Set f = fso.CreateTextFile(dir & "\b.txt") : f.Write "riga b" : f.Close
Check "file exists", k.FilExist(dir & "\A.TXT"), True
Check "file pattern", k.FilExist(dir & "\?.txt"), True
Check "file missing", k.FilExist(dir & "\c.txt"), False
k.AppeFile dir & "\a.txt", dir & "\b.txt", dir & "\ab.txt"
Check "AppeFile", fso.OpenTextFile(dir & "\ab.txt").ReadAll(), "riga a" & vbCrLf & "riga b" & vbCrLf
Check "path writable", k.Is_PathWritable(dir), True
Dim st : st = 1
On Error Resume Next
Err.Clear
k.GetStrFile 1, st, 3
Check "host file number", Err.Number, 52
Err.Clear
k.ejec 1
Check "host file number to ejec", Err.Number, 52
On Error GoTo 0
fso.DeleteFolder dir, True

' ---- facts of the machine: a 64-bit process on a 64-bit system
Check "bits", k.GetWindowsBit(), 64
Dim re : Set re = New RegExp
re.Pattern = "^Windows( [0-9.]+| Server| XP| Vista)* [0-9]+\.[0-9]+\.[0-9]+( .+)?$"
Check "version " & k.GetWindowsVer(), re.Test(k.GetWindowsVer()), True

If fails = 0 Then WScript.Echo "SEAMS-OK"
WScript.Quit fails
