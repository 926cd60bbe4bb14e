"""Prints as JSON what mutagen finds in the file of the first argument: a text for each frame."""
import json
import sys
from mutagen.id3 import ID3

tag = ID3(sys.argv[1], translate=False)
found = {key: str(frame) for key, frame in tag.items() if key[:4] not in ("APIC", "PRIV")}
found["version"] = "%d.%d.%d" % tag.version
found["pictures"] = str([(int(picture.type), picture.mime, picture.desc, picture.data.hex()) for picture in tag.getall("APIC")])
found["private"] = str([(private.owner, list(private.data)) for private in tag.getall("PRIV")])
print(json.dumps(found))
