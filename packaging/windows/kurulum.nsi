; The installer: for the current user, without administrator's rights. It lays out the program and
; what is missing of its data, and its uninstaller takes away the program alone.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!define NAME "Kervan Transfer"
!define OWN "Software\Kervan\Kurulum"
!define BESIDE "$INSTDIR\.kervan-yeni" ; the new program, and so not the uninstaller's to remove
!define ASIDE "$INSTDIR\.kervan-eski" ; the old one, until the new one stands
!define LISTED "Software\Microsoft\Windows\CurrentVersion\Uninstall\KervanTransfer"

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include Sections.nsh

Name "${NAME}"
OutFile "${TARGET}"
BrandingText "${NAME} ${VERSION}"
InstallDir "$LOCALAPPDATA\Programs\${NAME}"
InstallDirRegKey HKCU "${OWN}" "Klasor"
ShowInstDetails nevershow
ShowUninstDetails show
VIProductVersion "${NUMBERS}"
VIAddVersionKey /LANG=1055 ProductName "${NAME}"
VIAddVersionKey /LANG=1055 FileDescription "${NAME} kurulumu"
VIAddVersionKey /LANG=1055 FileVersion "${VERSION}"
VIAddVersionKey /LANG=1055 ProductVersion "${VERSION}"
VIAddVersionKey /LANG=1055 LegalCopyright ""

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TEXT "Bu sihirbaz ${NAME} ${VERSION} programını kurar; yönetici hakkı istemez.$\r$\n$\r$\nEski bir sürümün üzerine kurulursa veritabanları, tanımlar, ayarlar ve belgeler olduğu gibi kalır. Program açıksa önce kapatın."
!define MUI_DIRECTORYPAGE_TEXT_TOP "Programın verileri de bu klasörde durur. Yazma hakkınız olan bir klasör seçin; Program Files altına kurulmaz."
!define MUI_FINISHPAGE_RUN "$INSTDIR\kervan-transfer.exe"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\Yenilikler.txt"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!define MUI_UNCONFIRMPAGE_TEXT_TOP "Yalnız program kaldırılır. Veritabanları, tanımlar, ayarlar, kaynak dosyalar ve belgeler bu klasörde kalır:"

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE Turkish

; Tells why nothing is done; a silent run tells it by its exit status.
!macro Refuse WHY STATUS
    ${IfNot} ${Silent}
        MessageBox MB_OK|MB_ICONEXCLAMATION "${WHY}"
    ${EndIf}
    SetErrorLevel ${STATUS}
    Quit
!macroend

!macro Undo
!macroend
!macro UndoSetAside
    Call RestoreOld
!macroend

!macro QuitWhileRunning UNDO FOLDER PROGRAM WHY
    ${If} ${FileExists} "${FOLDER}\${PROGRAM}.exe"
        SetFileAttributes "${FOLDER}\${PROGRAM}.exe" NORMAL ; one that is only read is not open
        ClearErrors
        FileOpen $0 "${FOLDER}\${PROGRAM}.exe" a
        ${If} ${Errors}
            !insertmacro ${UNDO}
            !insertmacro Refuse "${WHY}" 3
        ${EndIf}
        FileClose $0
    ${EndIf}
!macroend

; The program's own files can't be replaced or removed while one of them runs.
!macro QuitWhileOpen UNDO FOLDER
    !insertmacro QuitWhileRunning ${UNDO} "${FOLDER}" kervan-transfer \
        "${NAME} açık. Programı kapatıp yeniden deneyin."
    !insertmacro QuitWhileRunning ${UNDO} "${FOLDER}" kervan-aktar \
        "kervan-aktar çalışıyor (bir aktarım ya da izlenen bir klasör). Durdurup yeniden deneyin."
    !insertmacro QuitWhileRunning ${UNDO} "${FOLDER}" kervan-kurulum \
        "kervan-kurulum çalışıyor. Bitince yeniden deneyin."
!macroend

; Sets $0 to 1 for Program Files and what is below it, else to nothing. The short names are compared,
; since "C:\PROGRA~1\Kervan" is below it as well; "\" makes a drive the drive, and not where it stands.
Function IsInProgramFiles
    GetFullPathName /SHORT $1 "$PROGRAMFILES64\"
    ReadEnvStr $2 "ProgramFiles(x86)" ; $PROGRAMFILES32 is the other one in an installer of 64 bits
    GetFullPathName /SHORT $2 "$2\"
    StrCpy $0 "$INSTDIR"
    ${DoUntil} $0 == ""
        GetFullPathName /SHORT $3 "$0\"
        ${If} $3 == $1
        ${OrIf} $3 == $2
            StrCpy $0 1
            Return
        ${EndIf}
        ${GetParent} "$0" $0
    ${Loop}
FunctionEnd

; Gives $1 the name $2; a scanner may look into it for a moment. $6 names, as $4, the first one that
; stayed as it was, behind which none is tried any more.
Function Move
    ${For} $5 1 20
        ${If} $6 != ""
            Return
        ${EndIf}
        ClearErrors
        Rename "$1" "$2"
        ${IfNot} ${Errors}
            Return
        ${EndIf}
        Sleep 500
    ${Next}
    StrCpy $6 "$4"
FunctionEnd

; The steps of an update, each of which is made for all of the program's folders and files: MOVES
; names them. The last two undo the first two, also those of an installer that was killed; where there
; is nothing to undo they do nothing.
Function SetAside
    ${If} ${FileExists} "$INSTDIR\$4"
        StrCpy $1 "$INSTDIR\$4"
        StrCpy $2 "${ASIDE}\$4"
        Call Move
    ${EndIf}
FunctionEnd
Function Place
    StrCpy $1 "${BESIDE}\$4"
    StrCpy $2 "$INSTDIR\$4"
    Call Move
FunctionEnd
Function TakeOut
    ${If} ${FileExists} "${ASIDE}\$4"
    ${AndIf} ${FileExists} "$INSTDIR\$4"
        StrCpy $1 "$INSTDIR\$4"
        StrCpy $2 "${BESIDE}\$4"
        Call Move
    ${EndIf}
FunctionEnd
Function PutBack
    ${If} ${FileExists} "${ASIDE}\$4"
    ${AndIfNot} ${FileExists} "$INSTDIR\$4"
        StrCpy $1 "${ASIDE}\$4"
        StrCpy $2 "$INSTDIR\$4"
        Call Move
    ${EndIf}
FunctionEnd
!macro OfFolder NAME
    !if ${STEP} == SetAside
        CreateDirectory "${ASIDE}\${NAME}"
    !else
        CreateDirectory "$INSTDIR\${NAME}"
    !endif
!macroend
!macro OfFile NAME
    StrCpy $4 "${NAME}"
    Call ${STEP}
!macroend
!macro ForAll WHAT
    StrCpy $6 ""
    !define STEP ${WHAT}
    !include "${MOVES}"
    !undef STEP
!macroend

; The unpacked program goes out before the old one comes back, so the old one is whole as long as there
; is some of the other. Where $6 names a file that stayed, both are kept: the next run goes on.
Function RestoreOld
    !insertmacro ForAll TakeOut
    ${If} $6 == ""
        !insertmacro ForAll PutBack
    ${EndIf}
    ${If} $6 == ""
        RMDir /r "${ASIDE}"
        RMDir /r "${BESIDE}"
    ${EndIf}
FunctionEnd

!macro RefuseKept
    !insertmacro Refuse "$6 başka bir programda açık, eski sürüm geri konamadı. O programı kapatıp kurulumu yeniden çalıştırın." 7
!macroend
; Behind a file, named by $6, that could not be moved.
!macro UndoAndRefuse WHY
    StrCpy $7 $6
    Call RestoreOld
    ${If} $6 != ""
        !insertmacro RefuseKept
    ${EndIf}
    !insertmacro Refuse "$7 ${WHY}" 7
!macroend

Function .onInstFailed
    SetOutPath "$INSTDIR"
    ${IfNot} ${FileExists} "${ASIDE}\*.*"
        RMDir /r "${BESIDE}"
    ${EndIf}
FunctionEnd

Function .onVerifyInstDir
    Call IsInProgramFiles
    ${If} $0 == 1
        Abort
    ${EndIf}
FunctionEnd

; A disk that is full, or rights that lack, shows here, and the old program is whole.
!macro UnpackBeside
    ClearErrors
    SetOutPath "${BESIDE}"
    File /r /x ornekler "${PROGRAM}/*"
    SetOutPath "$INSTDIR"
    ${If} ${Errors}
        RMDir /r "${BESIDE}"
        !insertmacro Refuse "Dosyalar kopyalanamadı: $INSTDIR" 7
    ${EndIf}
!macroend

Section "-Program"
    ; As the system spells it, since names are compared with it.
    CreateDirectory "$INSTDIR"
    GetFullPathName $0 "$INSTDIR"
    ${If} $0 != ""
        StrCpy $INSTDIR $0
    ${EndIf}
    ClearErrors
    FileOpen $0 "$INSTDIR\.kervan-deneme" w
    ${If} ${Errors}
        !insertmacro Refuse "$INSTDIR klasörüne yazılamıyor. Yazma hakkınız olan bir klasör seçin." 7
    ${EndIf}
    FileClose $0
    Delete "$INSTDIR\.kervan-deneme"
    ; What an installer that was killed left.
    ${If} ${FileExists} "${BESIDE}\*.*"
    ${AndIf} ${FileExists} "${ASIDE}\*.*"
        Call RestoreOld
        ${If} $6 != ""
            !insertmacro RefuseKept
        ${EndIf}
    ${EndIf}
    RMDir /r "${ASIDE}"
    !insertmacro QuitWhileOpen Undo "$INSTDIR"
    !insertmacro UnpackBeside
    ; A file that another program keeps shows here, and the old program becomes whole again.
    CreateDirectory "${ASIDE}"
    !insertmacro ForAll SetAside
    ${If} $6 != ""
        !insertmacro UndoAndRefuse "başka bir programda açık; eski sürüm olduğu gibi duruyor. O programı kapatıp kurulumu yeniden çalıştırın."
    ${EndIf}
    !insertmacro QuitWhileOpen UndoSetAside "${ASIDE}" ; started while the new one was unpacked
    ; What an older version laid out goes by its own list.
    ${If} ${FileExists} "$INSTDIR\kaldir.exe"
        ExecWait '"$INSTDIR\kaldir.exe" /S /guncelleme _?=$INSTDIR' $0
        ${If} $0 != 0
            !insertmacro UndoSetAside
            !insertmacro Refuse "Eski sürüm kaldırılamadı." 6
        ${EndIf}
    ${EndIf}
    !insertmacro ForAll Place
    ${If} $6 != ""
        !insertmacro UndoAndRefuse "yerine konamadı; başka bir program kullanıyor olabilir. Kurulumu yeniden çalıştırın."
    ${EndIf}
    RMDir /r "${BESIDE}"
    RMDir /r "${ASIDE}"
    ClearErrors
    SetOutPath "$INSTDIR\ornekler"
    SetOverwrite off ; somebody may have worked in them
    File "${PROGRAM}/ornekler/*"
    SetOverwrite on
    SetOutPath "$INSTDIR"
    ${If} ${Errors}
        !insertmacro Refuse "Dosyalar kopyalanamadı: $INSTDIR" 7
    ${EndIf}
    WriteUninstaller "$INSTDIR\kaldir.exe"
    nsExec::ExecToStack '"$INSTDIR\kervan-kurulum.exe" "$INSTDIR"'
    Pop $0
    Pop $1
    ${If} $0 != 0
        !insertmacro Refuse "Program klasörü hazırlanamadı:$\r$\n$1" 4
    ${EndIf}
    ReadRegStr $0 HKCU "${OWN}" "Klasor"
    ${If} $0 == $INSTDIR ; those that are wanted are made anew behind this
        Delete "$SMPROGRAMS\${NAME}.lnk"
        Delete "$DESKTOP\${NAME}.lnk"
    ${EndIf}
    WriteRegStr HKCU "${OWN}" "Klasor" "$INSTDIR"
    WriteRegStr HKCU "${LISTED}" "DisplayName" "${NAME}"
    WriteRegStr HKCU "${LISTED}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${LISTED}" "Publisher" "Kervan"
    WriteRegStr HKCU "${LISTED}" "DisplayIcon" "$INSTDIR\kervan-transfer.exe"
    WriteRegStr HKCU "${LISTED}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${LISTED}" "UninstallString" '"$INSTDIR\kaldir.exe"'
    WriteRegStr HKCU "${LISTED}" "QuietUninstallString" '"$INSTDIR\kaldir.exe" /S'
    WriteRegDWORD HKCU "${LISTED}" "EstimatedSize" ${SIZE}
    WriteRegDWORD HKCU "${LISTED}" "NoModify" 1
    WriteRegDWORD HKCU "${LISTED}" "NoRepair" 1
SectionEnd

Section "Başlat menüsü" InMenu
    CreateShortcut "$SMPROGRAMS\${NAME}.lnk" "$INSTDIR\kervan-transfer.exe"
SectionEnd

Section "Masaüstü kısayolu" OnDesktop
    CreateShortcut "$DESKTOP\${NAME}.lnk" "$INSTDIR\kervan-transfer.exe"
SectionEnd

Section /o "Örnek dosyalar ve tanımlar"
    nsExec::ExecToStack '"$INSTDIR\kervan-kurulum.exe" "$INSTDIR" "$INSTDIR\ornekler"'
    Pop $0
    Pop $1
    ${If} $0 != 0
        !insertmacro Refuse "Örnekler kopyalanamadı:$\r$\n$1" 4
    ${EndIf}
SectionEnd

; A silent run has no page whose button could stay grey.
Function .onInit
    Call IsInProgramFiles
    ${If} ${Silent}
    ${AndIf} $0 == 1
        SetErrorLevel 5
        Quit
    ${EndIf}
    ; An entry that the user took away doesn't come back with a newer version, but with a program that
    ; was uninstalled before.
    ReadRegStr $0 HKCU "${OWN}" "Klasor"
    ${If} $0 != ""
    ${AndIf} ${FileExists} "$0\kaldir.exe"
        ${IfNot} ${FileExists} "$SMPROGRAMS\${NAME}.lnk"
            !insertmacro UnselectSection ${InMenu}
        ${EndIf}
        ${IfNot} ${FileExists} "$DESKTOP\${NAME}.lnk"
            !insertmacro UnselectSection ${OnDesktop}
        ${EndIf}
    ${EndIf}
FunctionEnd

; Between the files and the folders of FILES. What an update can't delete is in nobody's way; a person
; gets another try.
!macro FilesAreGone
    ${If} ${Errors}
    ${AndIf} $8 == ""
        !insertmacro Refuse "Programın bazı dosyaları silinemedi, başka bir program kullanıyor olabilir. O programı kapatıp yeniden kaldırın." 7
    ${EndIf}
!macroend

Section Uninstall
    ; $8: an update calls it, which has the folders and entries in hand.
    StrCpy $8 ""
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/guncelleme" $1
    ${IfNot} ${Errors}
    ${OrIf} $EXEDIR == $INSTDIR ; by an older installer, as one that a person calls is a copy
        StrCpy $8 1
    ${EndIf}
    ReadRegStr $7 HKCU "${OWN}" "Klasor"
    GetFullPathName $7 "$7"
    !insertmacro QuitWhileOpen Undo "$INSTDIR"
    ClearErrors
    !include "${FILES}"
    Delete "$INSTDIR\kaldir.exe"
    ${If} $8 == ""
        RMDir /r "${BESIDE}"
        RMDir /r "${ASIDE}"
        RMDir "$INSTDIR" ; goes only when nothing of the user's is in it
        ${If} $7 == $INSTDIR ; else they are those of an installation elsewhere
            Delete "$SMPROGRAMS\${NAME}.lnk"
            Delete "$DESKTOP\${NAME}.lnk"
            DeleteRegKey HKCU "${LISTED}"
        ${EndIf}
    ${EndIf}
    DetailPrint "Veritabanları, tanımlar, ayarlar ve belgeler $INSTDIR klasöründe kaldı."
SectionEnd
