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
        <source>Turn photos upright</source>
        <translation>Fotos aufrecht drehen</translation>
    </message>
    <message>
        <source>As they are copied, photos are turned upright without loss, as their EXIF orientation says. A photo that cannot be turned without losing an edge is copied as it is. The camera card is never changed.</source>
        <translation>Beim Kopieren werden die Fotos verlustfrei aufrecht gedreht, wie es ihre EXIF-Ausrichtung angibt. Ein Foto, das sich nicht ohne Verlust eines Randes drehen lässt, wird unverändert kopiert. Die Speicherkarte wird nie verändert.</translation>
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
        <source>No program on this computer opens %1.</source>
        <translation>Kein Programm auf diesem Rechner öffnet %1.</translation>
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
