# Converts an X window dump (ZPixmap, 24 or 32 bits a pixel) to PNG with the standard library only.
import struct, sys, zlib
data = open(sys.argv[1], 'rb').read()
h = struct.unpack('>25I', data[:100])
header_size, fmt, depth, width, height = h[0], h[2], h[3], h[4], h[5]
byte_order, bpp, bpl, ncolors = h[7], h[11], h[12], h[19]
off = header_size + ncolors * 12
rows = []
for y in range(height):
    line = data[off + y * bpl: off + y * bpl + width * (bpp // 8)]
    out = bytearray(b'\x00')
    step = bpp // 8
    for x in range(0, width * step, step):
        px = line[x:x + step]
        if byte_order == 0:  # LSB first: B G R (A)
            out += bytes((px[2], px[1], px[0]))
        else:
            out += bytes((px[-3], px[-2], px[-1]))
    rows.append(bytes(out))
raw = zlib.compress(b''.join(rows), 6)
def chunk(t, d):
    return struct.pack('>I', len(d)) + t + d + struct.pack('>I', zlib.crc32(t + d) & 0xffffffff)
png = b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', width, height, 8, 2, 0, 0, 0)) + chunk(b'IDAT', raw) + chunk(b'IEND', b'')
open(sys.argv[2], 'wb').write(png)
