' FmtNum(1234.5, 10, 2) late-bound from VBScript: calls per second.
Option Explicit
Dim k : Set k = CreateObject("DLLKiv.Cl_KIV")
Dim calls : calls = CLng(WScript.Arguments(0))
Dim i, s, t0, t1
t0 = Timer
For i = 1 To calls
    s = k.FmtNum(1234.5, 10, 2)
Next
t1 = Timer
' An empty loop, to take the script's own cost apart.
Dim e0, e1
e0 = Timer
For i = 1 To calls
    s = "   1234,50"
Next
e1 = Timer
WScript.Echo "FmtNum from VBScript: " & calls & " calls in " & FormatNumber(t1 - t0, 3) & " s, " & _
    CLng(calls / (t1 - t0)) & " calls per second (empty loop " & FormatNumber(e1 - e0, 3) & " s)"
If s <> "   1234,50" Then WScript.Echo "FAIL " & s
WScript.Echo "BENCH-OK"
