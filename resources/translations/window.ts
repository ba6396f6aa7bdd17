<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>CTivoxDlg</name>
    <message>
        <source>Digital Camera Drive:</source>
        <translation>Digitalkamera-Laufwerk:</translation>
    </message>
    <message>
        <source>Select Digital &amp;Camera Drive</source>
        <translation>Digital&amp;kamera-Laufwerk wählen</translation>
    </message>
    <message>
        <source>Base Folder:</source>
        <translation>Basisordner:</translation>
    </message>
    <message>
        <source>Select the base folder, which contains the photo folder. As its name implies, the photo folder contains the photos.</source>
        <translation>Wählen Sie den Basisordner, der den Fotoordner enthält. Wie sein Name sagt, enthält der Fotoordner die Fotos.</translation>
    </message>
    <message>
        <source>Photo Folder:</source>
        <translation>Fotoordner:</translation>
    </message>
    <message>
        <source>Current &amp;Date</source>
        <translation>Aktuelles &amp;Datum</translation>
    </message>
    <message>
        <source>The photo folder receives the photos from the digital camera. The photos inside are displayed when switching to full screen editing.</source>
        <translation>Der Fotoordner nimmt die Fotos der Digitalkamera auf. Die Fotos darin werden beim Wechsel in die Vollbildbearbeitung angezeigt.</translation>
    </message>
    <message>
        <source>HTML Gallery Base Folder:</source>
        <translation>Basisordner der HTML-Galerien:</translation>
    </message>
    <message>
        <source>Folder containing HTML galleries. The subfolder names correspond to the photo folders inside the base folder.</source>
        <translation>Ordner mit den HTML-Galerien. Die Namen der Unterordner entsprechen den Fotoordnern im Basisordner.</translation>
    </message>
    <message>
        <source>Create Backup from Photo Folder</source>
        <translation>Sicherung des Fotoordners anlegen</translation>
    </message>
    <message>
        <source>&amp;Restore from Backup Folder</source>
        <translation>Aus Sicherungsordner &amp;wiederherstellen</translation>
    </message>
    <message>
        <source>Renaming Rule:</source>
        <translation>Umbenennungsregel:</translation>
    </message>
    <message>
        <source>EXIF Tag:</source>
        <translation>EXIF-Tag:</translation>
    </message>
    <message>
        <source>&amp;Renaming Rule</source>
        <translation>&amp;Umbenennungsregel</translation>
    </message>
    <message>
        <source>&amp;Get Photos</source>
        <translation>Fotos &amp;holen</translation>
    </message>
    <message>
        <source>Thumbnail Memory (MiB):</source>
        <translation>Speicher für Vorschaubilder (MiB):</translation>
    </message>
    <message>
        <source>Number of Tiles    X:</source>
        <translation>Anzahl der Kacheln    X:</translation>
    </message>
    <message>
        <source>Y:</source>
        <translation>Y:</translation>
    </message>
    <message>
        <source>Show &amp;Statusbar in Full Screen Editing</source>
        <translation>&amp;Statusleiste in der Vollbildbearbeitung zeigen</translation>
    </message>
    <message>
        <source>JPEG Quality:</source>
        <translation>JPEG-Qualität:</translation>
    </message>
    <message>
        <source>&amp;Full Screen
Editing</source>
        <translation>&amp;Vollbild-
bearbeitung</translation>
    </message>
    <message>
        <source>TivoxPlus Web Site</source>
        <translation>TivoxPlus-Webseite</translation>
    </message>
    <message>
        <source>https://tivoxplus.example.org/</source>
        <translation>https://tivoxplus.example.org/de/</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;About Tivox...</source>
        <translation>&amp;Über Tivox...</translation>
    </message>
</context>
<context>
    <name>CDrivesDlg</name>
    <message>
        <source>Drives</source>
        <translation>Laufwerke</translation>
    </message>
    <message>
        <source>Please select your digital camera drive.</source>
        <translation>Bitte wählen Sie das Laufwerk Ihrer Digitalkamera.</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>&amp;Aktualisieren</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>CAboutDlg</name>
    <message>
        <source>About Tivox</source>
        <translation>Über Tivox</translation>
    </message>
    <message>
        <source>Tivox Version 1.5</source>
        <translation>Tivox Version 1.5</translation>
    </message>
    <message>
        <source>Transfers photos from digital cameras
to PCs and helps with photo maintenance.</source>
        <translation>Überträgt Fotos von Digitalkameras
auf PCs und hilft bei der Fotopflege.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>CHyperLinkStatic</name>
    <message>
        <source>Unable to open hyperlink:

</source>
        <translation>Der Link kann nicht geöffnet werden:

</translation>
    </message>
    <message>
        <source>The operating system is out
of memory or resources.</source>
        <translation>Dem Betriebssystem fehlt es
an Speicher oder Ressourcen.</translation>
    </message>
    <message>
        <source>The specified file was not found.</source>
        <translation>Die angegebene Datei wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>The specified path was not found.</source>
        <translation>Der angegebene Pfad wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>The operating system denied
access to the specified file.</source>
        <translation>Das Betriebssystem hat den Zugriff
auf die angegebene Datei verweigert.</translation>
    </message>
    <message>
        <source>There was not enough memory to complete the operation.</source>
        <translation>Für diesen Vorgang war nicht genug Speicher vorhanden.</translation>
    </message>
    <message>
        <source>The .EXE file is invalid
(non-Win32 .EXE or error in .EXE image).</source>
        <translation>Die .EXE-Datei ist ungültig
(keine Win32-.EXE oder Fehler im .EXE-Abbild).</translation>
    </message>
    <message>
        <source>A sharing violation occurred.</source>
        <translation>Eine Freigabeverletzung ist aufgetreten.</translation>
    </message>
    <message>
        <source>The filename association is
incomplete or invalid.</source>
        <translation>Die Dateizuordnung ist
unvollständig oder ungültig.</translation>
    </message>
    <message>
        <source>The DDE transaction could not
be completed because the request timed out.</source>
        <translation>Die DDE-Transaktion konnte nicht
abgeschlossen werden, weil die Anfrage zu lange dauerte.</translation>
    </message>
    <message>
        <source>The DDE transaction failed.</source>
        <translation>Die DDE-Transaktion ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The DDE transaction could not
be completed because other DDE transactions
were being processed.</source>
        <translation>Die DDE-Transaktion konnte nicht
abgeschlossen werden, weil andere DDE-Transaktionen
bearbeitet wurden.</translation>
    </message>
    <message>
        <source>There is no application associated
with the given filename extension.</source>
        <translation>Mit der angegebenen Dateiendung ist
keine Anwendung verknüpft.</translation>
    </message>
    <message>
        <source>The specified dynamic-link library was not found.</source>
        <translation>Die angegebene Programmbibliothek wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>Unknown Error (%1) occurred.</source>
        <translation>Unbekannter Fehler (%1) aufgetreten.</translation>
    </message>
</context>
<context>
    <name>Tivox</name>
    <message>
        <source>Please enter an integer between %s and %s.</source>
        <translation>Bitte geben Sie eine ganze Zahl zwischen %s und %s ein.</translation>
    </message>
    <message>
        <source>Select base directory for photo folders</source>
        <translation>Basisordner für die Fotoordner wählen</translation>
    </message>
    <message>
        <source>Select base directory for HTML galleries</source>
        <translation>Basisordner für die HTML-Galerien wählen</translation>
    </message>
    <message>
        <source>Select target directory for photos</source>
        <translation>Zielordner für die Fotos wählen</translation>
    </message>
    <message>
        <source>Root directory not allowed.
Please select a subfolder.</source>
        <translation>Das Wurzelverzeichnis ist nicht erlaubt.
Bitte wählen Sie einen Unterordner.</translation>
    </message>
    <message>
        <source>The drive you selected is not a removable drive.
Are you sure that this is your digital camera?</source>
        <translation>Das gewählte Laufwerk ist kein Wechsellaufwerk.
Sind Sie sicher, dass dies Ihre Digitalkamera ist?</translation>
    </message>
</context>
</TS>
