using System;
using System.Collections.Generic;
using System.Text;

namespace Telvofm
{
    /// <summary>Texts as the library takes and gives them: bytes in Windows-1250. Strict: what the printer could not
    /// print as it was written is refused here, and no byte that comes back is lost.</summary>
    public static class Windows1250
    {
        static readonly Dictionary<char, byte> bytes = Reversed();

        static Dictionary<char, byte> Reversed()
        {
            var found = new Dictionary<char, byte>();
            for (int index = 0; index < 128; index++)
            {
                found[Raw.Windows1250.UpperHalf[index]] = (byte)(0x80 + index);
            }
            return found;
        }

        /// <summary>The bytes of a text with a NUL behind them, as the raw layer wants each text. Null is empty.</summary>
        public static byte[] Encode(string text)
        {
            text = text ?? "";
            var encoded = new byte[text.Length + 1];
            for (int index = 0; index < text.Length; index++)
            {
                encoded[index] = ByteOf(text, index);
            }
            return encoded;
        }

        /// <summary>A letter as the byte that it is, for what the raw layer takes as a byte.</summary>
        public static byte Encode(char letter)
        {
            return ByteOf(letter.ToString(), 0);
        }

        /// <summary>The text of bytes, each of them one character; NULs among them stay.</summary>
        public static string Decode(byte[] text)
        {
            var decoded = new StringBuilder(text.Length);
            foreach (byte one in text)
            {
                decoded.Append(one < 0x80 ? (char)one : Raw.Windows1250.UpperHalf[one - 0x80]);
            }
            return decoded.ToString();
        }

        static byte ByteOf(string text, int index)
        {
            char character = text[index];
            byte found;
            if (character > 0 && character < 0x80)
            {
                return (byte)character;
            }
            if (character != 0 && bytes.TryGetValue(character, out found))
            {
                return found;
            }
            throw new UnencodableTextException(text, index);
        }
    }

    /// <summary>A text that cannot be sent as it is. Nothing has been sent.</summary>
    public sealed class UnencodableTextException : TelvofmException
    {
        /// <summary>Which character it is, counted from 1.</summary>
        public int Position { get; private set; }

        internal UnencodableTextException(string text, int index)
            : base(Sentence(text, index, PositionOf(text, index)))
        {
            Position = PositionOf(text, index);
        }

        /// <summary>Characters that take two places in a string of this language count once.</summary>
        static int PositionOf(string text, int index)
        {
            int position = 1;
            for (int before = 0; before < index; before++)
            {
                position += char.IsLowSurrogate(text[before]) ? 0 : 1;
            }
            return position;
        }

        static string Sentence(string text, int index, int position)
        {
            if (text[index] == 0)
            {
                return "Character " + position + " of the text is a NUL, where the printer's text would end; take it out.";
            }
            bool isPair = index + 1 < text.Length && char.IsSurrogatePair(text, index);
            string character = isPair ? text.Substring(index, 2) : text.Substring(index, 1);
            int point = isPair ? char.ConvertToUtf32(text, index) : text[index];
            return "Character " + position + " of the text, " + character + " (U+" + point.ToString("X4") +
                   "), is not in Windows-1250; write it in another way.";
        }
    }
}
