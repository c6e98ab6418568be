' The automation contract of DLLKiv.dll as a script host sees it. Each check
' prints "FAIL ..." when it does not hold; the last line is the sentinel the
' harness requires (Wine's cscript hides script errors).
Option Explicit
Dim fails : fails = 0
Sub Check(name, got, want)
    If got <> want Then
        WScript.Echo "FAIL " & name & ": got [" & got & "] want [" & want & "]"
        fails = fails + 1
    End If
End Sub

Dim k : Set k = CreateObject("DLLKiv.Cl_KIV")
' The type name comes from the type library (Wine's VBScript keeps the
' interface's leading underscore).
Check "typename", Replace(TypeName(k), "_Cl_KIV", "Cl_KIV"), "Cl_KIV"
Check "case-blind name", k.allungA("ab", 4, "."), "ab.."
Check "default argument", k.Allunga("ab", 4), "ab  "

' By reference: the operation's change reaches the script's variable.
Dim mig : mig = True
Dim s : s = k.FmtNum(1234567, 5, 0, mig)
Check "by-ref write-back", mig, False
Dim n : n = 5
k.Incr n
Check "by-ref Incr", n, 6
k.Incr n, 10
Check "by-ref Incr step", n, 16
' In parentheses the argument is a copy: the variable keeps its value.
k.Incr (n)
Check "by-value copy", n, 16

' Omitted arguments (VBScript has no named arguments: client.cpp has them).
Check "gap in arguments", k.FmtNum(1.5, 6, , mig), k.FmtNum(1.5, 6, 0, mig)

' Run-time errors carry the number and the description.
On Error Resume Next
Err.Clear
s = k.Allunga("ab", 4, "")
Check "error number", Err.Number, 5
Check "error text", Err.Description, "Invalid procedure call or argument"
Err.Clear
s = k.NoSuchMember(1)
Check "unknown member", Err.Number, 438
Err.Clear
s = k.Allunga()
Check "missing required argument", Err.Number <> 0, True
On Error GoTo 0

' Object slots and the collection.
Check "fresh slot", k.DlK_DatMask Is Nothing, True
Dim c : Set c = CreateObject("DLLKiv.Col_KIV")
Dim a : Set a = c.Add(k, "uno")
Set a = c.Add(k, "due")
Check "count", c.Count, 2
Check "default member", c("UNO") Is c.Item(1), True
Check "item slot", c.Item(2).DlK_DatMask Is k, True
Dim it, seen : seen = 0
For Each it In c
    seen = seen + 1
    Check "for each item", it Is k, False
Next
Check "for each count", seen, 2
Set k.DlK_TimMask = c
Check "property put/get", k.DlK_TimMask.Count, 2

' The script's own objects stand for the host's controls: the operations
' reach their members by name, and an error they raise keeps its number.
Class Lista
    Public Property Get ListCount()
        ListCount = 2
    End Property
    Public Property Get List(i)
        List = "x" & i
    End Property
    Public Sub Clear()
    End Sub
    Public Sub AddItem(t)
        Err.Raise 6
    End Sub
End Class
Check "script object's members", k.List2Pipe(New Lista, ","), "x0,x1,"
On Error Resume Next
Err.Clear
n = k.Pipe2List("a", New Lista)
Check "script object's error", Err.Number, 6
On Error GoTo 0

'' A message box goes to the file KIV_MSGBOX_LOG names (unattended runs).
Dim logPath : logPath = CreateObject("WScript.Shell").Environment("PROCESS")("KIV_MSGBOX_LOG")
s = k.FmtNum(5, 3, 2)
Dim fso : Set fso = CreateObject("Scripting.FileSystemObject")
Dim logText : logText = ""
If fso.FileExists(logPath) Then logText = fso.OpenTextFile(logPath).ReadAll()
Check "message box to the log", logText, "[FmtNum] ERRORE di formato in Function FmtNum!" & vbCrLf

If fails = 0 Then WScript.Echo "CONTRACT-OK"
WScript.Quit fails
