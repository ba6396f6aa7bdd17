<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Tivox</name>
    <message>
        <source>Drive type cannot be determined.</source>
        <translation>Der Laufwerkstyp kann nicht bestimmt werden.</translation>
    </message>
    <message>
        <source>Root directory does not exist.</source>
        <translation>Das Stammverzeichnis existiert nicht.</translation>
    </message>
    <message>
        <source>Floppy Disc Drive</source>
        <translation>Diskettenlaufwerk</translation>
    </message>
    <message>
        <source>Removable Drive</source>
        <translation>Wechseldatenträger</translation>
    </message>
    <message>
        <source>Hard Disc</source>
        <translation>Festplatte</translation>
    </message>
    <message>
        <source>Remote (Network) Drive</source>
        <translation>Netzlaufwerk</translation>
    </message>
    <message>
        <source>CD-/DVD-ROM drive</source>
        <translation>CD-/DVD-ROM-Laufwerk</translation>
    </message>
    <message>
        <source>RAM disk</source>
        <translation>RAM-Disk</translation>
    </message>
    <message>
        <source>Bytes free: %s</source>
        <translation>Bytes frei: %s</translation>
    </message>
    <message>
        <source>Bytes total: %s</source>
        <translation>Bytes gesamt: %s</translation>
    </message>
    <message>
        <source>Please select the digital camera drive first.</source>
        <translation>Bitte wählen Sie zuerst das Laufwerk der Digitalkamera aus.</translation>
    </message>
    <message>
        <source>Please select the target folder first.</source>
        <translation>Bitte wählen Sie zuerst den Zielordner aus.</translation>
    </message>
    <message>
        <source>The current digital camera drive has not been detected as a removable drive. You may change it by clicking the &quot;Select Digital Camera Drive&quot; button.

Proceed anyway?</source>
        <translation>Das aktuelle Laufwerk der Digitalkamera wurde nicht als Wechseldatenträger erkannt. Sie können es mit der Schaltfläche &quot;Digitalkamera-Laufwerk wählen&quot; ändern.

Trotzdem fortfahren?</translation>
    </message>
    <message>
        <source>The selected photo folder contains %s file and %s folder.
If you continue, all of them will be deleted
prior to getting new photos from the camera.

Continue?</source>
        <translation>Der gewählte Fotoordner enthält %s Datei und %s Ordner.
Wenn Sie fortfahren, werden sie alle gelöscht,
bevor die neuen Fotos von der Kamera geholt werden.

Fortfahren?</translation>
    </message>
    <message>
        <source>The selected photo folder contains %s file and %s folders.
If you continue, all of them will be deleted
prior to getting new photos from the camera.

Continue?</source>
        <translation>Der gewählte Fotoordner enthält %s Datei und %s Ordner.
Wenn Sie fortfahren, werden sie alle gelöscht,
bevor die neuen Fotos von der Kamera geholt werden.

Fortfahren?</translation>
    </message>
    <message>
        <source>The selected photo folder contains %s files and %s folder.
If you continue, all of them will be deleted
prior to getting new photos from the camera.

Continue?</source>
        <translation>Der gewählte Fotoordner enthält %s Dateien und %s Ordner.
Wenn Sie fortfahren, werden sie alle gelöscht,
bevor die neuen Fotos von der Kamera geholt werden.

Fortfahren?</translation>
    </message>
    <message>
        <source>The selected photo folder contains %s files and %s folders.
If you continue, all of them will be deleted
prior to getting new photos from the camera.

Continue?</source>
        <translation>Der gewählte Fotoordner enthält %s Dateien und %s Ordner.
Wenn Sie fortfahren, werden sie alle gelöscht,
bevor die neuen Fotos von der Kamera geholt werden.

Fortfahren?</translation>
    </message>
    <message>
        <source>Could not create the target folder.
Aborted.</source>
        <translation>Der Zielordner konnte nicht angelegt werden.
Abgebrochen.</translation>
    </message>
    <message>
        <source>The target folder path exists,
but it is a file, not a folder.
Aborted.</source>
        <translation>Der Pfad des Zielordners existiert,
ist aber eine Datei und kein Ordner.
Abgebrochen.</translation>
    </message>
    <message>
        <source>Could not create the backup folder.
Aborted.</source>
        <translation>Der Sicherungsordner konnte nicht angelegt werden.
Abgebrochen.</translation>
    </message>
    <message>
        <source>The backup folder path exists,
but it is a file, not a folder.
Aborted.</source>
        <translation>Der Pfad des Sicherungsordners existiert,
ist aber eine Datei und kein Ordner.
Abgebrochen.</translation>
    </message>
    <message>
        <source>Finished copying.</source>
        <translation>Kopieren abgeschlossen.</translation>
    </message>
    <message>
        <source>Restoring from the backup folder deletes the files in the current photo folder
and replaces them with the originals from the backup folder.

Continue?</source>
        <translation>Beim Wiederherstellen aus dem Sicherungsordner werden die Dateien im aktuellen Fotoordner gelöscht
und durch die Originale aus dem Sicherungsordner ersetzt.

Fortfahren?</translation>
    </message>
    <message>
        <source>Restoring from the backup folder deletes the %s file and %s folder in the current photo folder
and replaces them with the originals from the backup folder.

Continue?</source>
        <translation>Beim Wiederherstellen aus dem Sicherungsordner werden die %s Datei und %s Ordner im aktuellen Fotoordner gelöscht
und durch die Originale aus dem Sicherungsordner ersetzt.

Fortfahren?</translation>
    </message>
    <message>
        <source>Restoring from the backup folder deletes the %s file and %s folders in the current photo folder
and replaces them with the originals from the backup folder.

Continue?</source>
        <translation>Beim Wiederherstellen aus dem Sicherungsordner werden die %s Datei und %s Ordner im aktuellen Fotoordner gelöscht
und durch die Originale aus dem Sicherungsordner ersetzt.

Fortfahren?</translation>
    </message>
    <message>
        <source>Restoring from the backup folder deletes the %s files and %s folder in the current photo folder
and replaces them with the originals from the backup folder.

Continue?</source>
        <translation>Beim Wiederherstellen aus dem Sicherungsordner werden die %s Dateien und %s Ordner im aktuellen Fotoordner gelöscht
und durch die Originale aus dem Sicherungsordner ersetzt.

Fortfahren?</translation>
    </message>
    <message>
        <source>Restoring from the backup folder deletes the %s files and %s folders in the current photo folder
and replaces them with the originals from the backup folder.

Continue?</source>
        <translation>Beim Wiederherstellen aus dem Sicherungsordner werden die %s Dateien und %s Ordner im aktuellen Fotoordner gelöscht
und durch die Originale aus dem Sicherungsordner ersetzt.

Fortfahren?</translation>
    </message>
    <message>
        <source>No backup files found!

Aborted.</source>
        <translation>Keine Sicherungsdateien gefunden!

Abgebrochen.</translation>
    </message>
    <message>
        <source>Finished restoring the photo folder from its backup.</source>
        <translation>Der Fotoordner wurde aus seiner Sicherung wiederhergestellt.</translation>
    </message>
    <message>
        <source>The photo folder and the camera drive overlap.
The camera drive is only ever read.
Aborted.</source>
        <translation>Der Fotoordner und das Laufwerk der Digitalkamera überschneiden sich.
Auf das Laufwerk der Kamera wird nie geschrieben.
Abgebrochen.</translation>
    </message>
</context>
</TS>
