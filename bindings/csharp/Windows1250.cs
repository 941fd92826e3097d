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
                found[Raw.Windows1250Table.UpperHalf[index]] = (byte)(0x80 + index);
            }
            return found;
        }

        /// <summary>The bytes of a text with a NUL behind them, as the raw layer wants each text. Null is empty. Throws
        /// TextException for a NUL in it, and for a character that Windows-1250 lacks; says which and where.</summary>
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

        /// <summary>A letter as the byte that it is, for what the raw layer takes as a byte. Throws TextException.</summary>
        public static byte Encode(char letter)
        {
            return ByteOf(letter.ToString(), 0);
        }

        /// <summary>The text of any bytes, each of them one character; NULs among them stay. Encode gives the same bytes back.</summary>
        public static string Decode(byte[] text)
        {
            var decoded = new StringBuilder(text.Length);
            foreach (byte one in text)
            {
                decoded.Append(one < 0x80 ? (char)one : Raw.Windows1250Table.UpperHalf[one - 0x80]);
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
            throw new TextException(text, index);
        }
    }

    /// <summary>A text that cannot be sent as it is. Nothing was sent.</summary>
    public sealed class TextException : TelvofmException
    {
        /// <summary>Where in the text the character is, counted from 0.</summary>
        public int Position { get; private set; }

        internal TextException(string text, int position, string codePage = "Windows-1250") : base(Sentence(text, position, codePage))
        {
            Position = position;
        }

        static string Sentence(string text, int position, string codePage)
        {
            if (text[position] == 0)
            {
                return "The text has a NUL at position " + position + ", where the printer's text would end; take it out.";
            }
            bool isPair = char.IsSurrogatePair(text, position);
            string character = text.Substring(position, isPair ? 2 : 1);
            int point = isPair ? char.ConvertToUtf32(text, position) : text[position];
            return "The text has the character " + character + " (U+" + point.ToString("X4") + ") at position " + position +
                   ", which " + codePage + " lacks; write it in another way.";
        }
    }
}
