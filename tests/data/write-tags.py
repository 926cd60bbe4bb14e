"""Gives the file of the first argument a tag of the version that the second tells, with the text of the third."""
import sys
from mutagen import id3

path, version, text = sys.argv[1], int(sys.argv[2]), sys.argv[3]
encoding = 3 if version == 4 else 1
tag = id3.ID3()
for kind in (id3.TIT2, id3.TPE1, id3.TALB, id3.TCOM, id3.TOPE, id3.TCOP, id3.TENC):
    tag.add(kind(encoding=encoding, text=[text]))
tag.add(id3.TRCK(encoding=0, text=["3/12"]))
tag.add(id3.TDRC(encoding=0, text=["1997-05-06"]) if version == 4 else id3.TYER(encoding=0, text=["1997"]))
tag.add(id3.TCON(encoding=0, text=["17" if version == 4 else "(17)"]))
tag.add(id3.USLT(encoding=encoding, lang="deu", desc="", text=text + "\nzwei"))
tag.add(id3.COMM(encoding=encoding, lang="fra", desc=text, text=[text]))
tag.add(id3.COMM(encoding=0, lang="eng", desc="MusicMatch_Mood", text=["calm"]))
tag.add(id3.TXXX(encoding=encoding, desc="key", text=["value"]))
tag.add(id3.TXXX(encoding=encoding, desc="", text=[text]))
tag.add(id3.WXXX(encoding=0, desc="", url="http://file.example"))
tag.add(id3.WOAR(url="http://artist.example"))
tag.add(id3.APIC(encoding=encoding, mime="image/png", type=3, desc=text, data=b"\x89PNG" + bytes(1000)))
tag.add(id3.PRIV(owner="me", data=bytes(range(256))))
tag.add(id3.POPM(email="a@b.example", rating=196, count=7))
tag.save(path, v1=2, v2_version=version)
