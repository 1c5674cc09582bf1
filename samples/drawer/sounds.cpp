#include "sounds.h"

#include <QDataStream>
#include <QFile>
#include <QIODevice>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cmath>
#include <sndfile.h>
#include <stdexcept>
#include <vector>

namespace wb
{

namespace
{

constexpr float Turn = 6.2831853F;
constexpr int ShotRate = 22050;
constexpr int MusicRate = 44100;

QByteArray WriteWav(const std::vector<float> &samples, int rate)
{
    const auto length = quint32(samples.size() * 2);
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << length + 36;
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(1) << quint32(rate) << quint32(rate * 2) << quint16(2)
        << quint16(16);
    out.writeRawData("data", 4);
    out << length;
    for (const float sample : samples)
        out << qint16(std::lround(std::clamp(sample, -1.0F, 1.0F) * 32767));
    return bytes;
}

QByteArray WriteMp3(const std::vector<float> &samples, int rate)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("music.mp3"));
    SF_INFO info{0, rate, 2, SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 0, 0};
    SNDFILE *file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    const auto count = sf_count_t(samples.size());
    const bool isWritten = file != nullptr && sf_write_float(file, samples.data(), count) == count;
    if (!isWritten || sf_close(file) != 0)
        throw std::runtime_error("can't encode MP3");
    QFile written(path);
    return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
}

} // namespace

QByteArray MakeShot()
{
    std::vector<float> samples(ShotRate * 7 / 10);
    float phase = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const float time = float(i) / ShotRate;
        phase += (160 + 1500 * std::exp(-time * 7)) / ShotRate;
        const float whistle = std::sin(Turn * phase) + 0.4F * std::sin(Turn * phase * 2.01F);
        samples[i] = 0.6F * whistle * std::exp(-time * 6) * std::min(time * 400, 1.0F);
    }
    return WriteWav(samples, ShotRate);
}

QByteArray MakeMusic()
{
    // Half-tones above A, one after another; each rings on under those that follow.
    constexpr std::array Notes = {0, 7, 12, 15, 14, 12, 7,  10, -4, 3, 8, 12, 10,
                                  8, 3, 7,  -2, 5,  10, 14, 12, 10, 5, 9, 0};
    constexpr float Beat = 0.28F;
    std::vector<float> samples(std::size_t(float(Notes.size() + 6) * Beat * MusicRate) * 2);
    for (std::size_t note = 0; note < Notes.size(); ++note) {
        const float frequency = 220 * std::pow(2.0F, float(Notes[note]) / 12);
        const float left = note % 2 == 0 ? 0.24F : 0.12F;
        const auto start = std::size_t(float(note) * Beat * MusicRate) * 2;
        for (std::size_t i = start; i + 1 < samples.size(); i += 2) {
            const float time = float(i - start) / 2 / MusicRate;
            const float string = std::sin(Turn * frequency * time) +
                                 0.5F * std::sin(Turn * 2 * frequency * time) * std::exp(-time * 3) +
                                 0.25F * std::sin(Turn * 3 * frequency * time) * std::exp(-time * 6);
            const float loudness = std::exp(-time * 2.2F) * std::min(time * 120, 1.0F);
            samples[i] += left * loudness * string;
            samples[i + 1] += (0.36F - left) * loudness * string;
        }
    }
    return WriteMp3(samples, MusicRate);
}

} // namespace wb
