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
        <source>No backup files found in %s.

Aborted.</source>
        <translation>Keine Sicherungsdateien in %s gefunden.

Abgebrochen.</translation>
    </message>
    <message>
        <source>Restoring replaces everything in the photo folder with the photos of its backup.

Photo folder: %s
Files to delete: %s
Folders to delete: %s

Backup folder: %s
Photos to restore: %s

Continue?</source>
        <translation>Beim Wiederherstellen wird alles im Fotoordner durch die Fotos seiner Sicherung ersetzt.

Fotoordner: %s
Zu löschende Dateien: %s
Zu löschende Ordner: %s

Sicherungsordner: %s
Wiederherzustellende Fotos: %s

Fortfahren?</translation>
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
    <message>
        <source>Restoring the photo folder from its backup did not complete.</source>
        <translation>Die Wiederherstellung des Fotoordners aus seiner Sicherung ist nicht vollständig.</translation>
    </message>
    <message>
        <source>Copying the photos did not complete.</source>
        <translation>Das Kopieren der Fotos ist nicht vollständig.</translation>
    </message>
    <message>
        <source>Photos copied and verified: %s of %s.</source>
        <translation>Kopierte und geprüfte Fotos: %s von %s.</translation>
    </message>
    <message>
        <source>Photos turned upright: %s.</source>
        <translation>Aufrecht gedrehte Fotos: %s.</translation>
    </message>
    <message>
        <source>Copied and verified into the backup folder: %s of %s.</source>
        <translation>In den Sicherungsordner kopiert und geprüft: %s von %s.</translation>
    </message>
    <message>
        <source>No backup was made.</source>
        <translation>Es wurde keine Sicherung angelegt.</translation>
    </message>
    <message>
        <source>Not copied:</source>
        <translation>Nicht kopiert:</translation>
    </message>
    <message>
        <source>Not copied into the backup folder:</source>
        <translation>Nicht in den Sicherungsordner kopiert:</translation>
    </message>
    <message>
        <source>%s more photos were not copied.</source>
        <translation>%s weitere Fotos wurden nicht kopiert.</translation>
    </message>
    <message>
        <source>The backup folder still holds these photos.</source>
        <translation>Der Sicherungsordner enthält diese Fotos weiterhin.</translation>
    </message>
    <message>
        <source>The camera card still holds these photos: do not erase it yet.</source>
        <translation>Die Speicherkarte der Kamera enthält diese Fotos noch: Löschen Sie sie noch nicht.</translation>
    </message>
    <message>
        <source>the disc is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
    <message>
        <source>cannot be read: %s</source>
        <translation>kann nicht gelesen werden: %s</translation>
    </message>
    <message>
        <source>the copy cannot be written: %s</source>
        <translation>die Kopie kann nicht geschrieben werden: %s</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>the copy cannot be read back: %s</source>
        <translation>die Kopie kann nicht zurückgelesen werden: %s</translation>
    </message>
    <message>
        <source>the copy read back from the disc differs from the original</source>
        <translation>die vom Datenträger zurückgelesene Kopie weicht vom Original ab</translation>
    </message>
    <message>
        <source>the copy cannot be flushed to the disc: %s</source>
        <translation>die Kopie kann nicht auf den Datenträger geschrieben werden: %s</translation>
    </message>
    <message>
        <source>%s exists already</source>
        <translation>%s ist bereits vorhanden</translation>
    </message>
    <message>
        <source>the copy cannot be named %s: %s</source>
        <translation>die Kopie kann nicht %s genannt werden: %s</translation>
    </message>
    <message>
        <source>the names of the copies cannot be flushed to the disc: %s</source>
        <translation>die Namen der Kopien können nicht auf den Datenträger geschrieben werden: %s</translation>
    </message>
</context>
</TS>
