import pytest

from rig.installer import Installer
from rig.page_server import page


@pytest.fixture
def installer():
    """An installer whose server got every expected request and no other; its log is shown when a test fails."""
    it = Installer("Größe und blank.app")
    yield it
    print(it.log() if it.process else "")
    it.close()
    assert it.server.faults() == []


@pytest.fixture
def server(installer):
    return installer.server


@pytest.fixture
def start_with(installer, server):
    """Starts the installer with a first page."""
    def start_with_page(first_page=None):
        server.expect(installer.first_path(), first_page)
        installer.start()
    return start_with_page


@pytest.fixture
def start(start_with):
    """Starts the installer, whose first page then navigates to a URL."""
    return lambda then: start_with(page("first", then))
